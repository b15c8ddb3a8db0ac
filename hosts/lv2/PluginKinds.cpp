#include "PluginKinds.h"

#include <algorithm>
#include <iterator>

#include "EffectInstance.h"

namespace {

constexpr PluginKind kinds[] = {
    {FourCharCode("bpas"), "lv2:BandpassPlugin",
     "Lets a band round a frequency pass; the bandwidth is given in cents."},
    {FourCharCode("dcmp"), "lv2:CompressorPlugin , lv2:ExpanderPlugin",
     "Compressor above one threshold, downward expander below another."},
    {FourCharCode("dely"), "lv2:DelayPlugin",
     "Echo of up to three seconds with filtered feedback, which may be negative.", false, true},
    {FourCharCode("filt"), "lv2:MultiEQPlugin , lv2:ParaEQPlugin",
     "Five bands: low shelf or highpass, three peaks, high shelf or lowpass."},
    {FourCharCode("hpas"), "lv2:HighpassPlugin", "Highpass of second order with resonance."},
    {FourCharCode("hshf"), "lv2:EQPlugin", "Raises or lowers everything above a frequency."},
    {FourCharCode("lmtr"), "lv2:LimiterPlugin", "Look-ahead limiter: no sample leaves it above 0 dBFS.",
     true},
    {FourCharCode("lpas"), "lv2:LowpassPlugin", "Lowpass of second order with resonance."},
    {FourCharCode("lshf"), "lv2:EQPlugin", "Raises or lowers everything below a frequency."},
    {FourCharCode("mcmp"), "lv2:CompressorPlugin",
     "Four compressors behind crossovers that add up flat, each with its own gain."},
    {FourCharCode("mrev"), "lv2:ReverbPlugin",
     "Reverb of a small and a large room, in between which the sound can be moved."},
    {FourCharCode("pmeq"), "lv2:ParaEQPlugin", "Raises or lowers one band round a frequency."},
    {FourCharCode("sdly"), "lv2:DelayPlugin", "Delays by an exact number of samples."},
    {FourCharCode("tmpt"), "lv2:PitchPlugin", "Transposes by up to two octaves without changing the speed.",
     true, false, false},
    {FourCharCode("Qmrv"), "lv2:ReverbPlugin",
     "Reverb of a small and a large room, in between which the sound can be moved."},
};

}  // namespace

const PluginKind* pluginKind(OSType subtype) {
  const auto found = std::find_if(std::begin(kinds), std::end(kinds),
                                  [subtype](const PluginKind& kind) { return kind.subtype == subtype; });
  return found == std::end(kinds) ? nullptr : found;
}

std::string pluginUri(Component component) {
  return "urn:tovin:lv2:" + effectCode(component);
}

std::string pluginEditorUri(Component component) {
  return pluginUri(component) + "#ui";
}

std::string pluginName(Component component) {
  std::string words = effectName(component);
  if (const size_t prefix = words.find(": AU"); prefix != std::string::npos) words.erase(0, prefix + 4);
  const auto isUpper = [&](size_t at) { return words[at] >= 'A' && words[at] <= 'Z'; };
  for (size_t i = words.size(); i-- > 1;)
    if (isUpper(i) && !isUpper(i - 1)) words.insert(i, 1, ' ');
  return words;
}
