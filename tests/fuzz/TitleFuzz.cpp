// The title of a chosen rhythm or interval, at any tempo: its number is set in range or nothing is, and both
// title and tempo can be shown.
//
// An input: which editor, the host's tempo (8 bytes), the title.

#include "AudioUnitProperties.h"
#include "FuzzBytes.h"
#include "FuzzStage.h"
#include "Must.h"
#include "NSPopUpButton.h"
#include "dely_UIView.h"
#include "jxTitleRatio.h"
#include "tmpt_UIView.h"

namespace {

double hostTempo = 120;

OSStatus tellTempo(void*, Float64*, Float64* tempo) {
  *tempo = hostTempo;
  return noErr;
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzBytes input(data, size);
  const bool isDelay = input.below(2) == 0;
  hostTempo = input.any<double>();
  const std::string title = input.rest();

  FuzzStage stage(isDelay ? "dely" : "tmpt");
  if (isDelay) {
    const HostCallbackInfo host{.beatAndTempoProc = &tellTempo};
    AudioUnitSetProperty(stage.effect.get(), kAudioUnitProperty_HostCallbacks, kAudioUnitScope_Global, 0,
                         &host, sizeof host);
    stage.advance(0.6);
  }
  NSPopUpButton& popUp = *stage.all<NSPopUpButton>().front();
  popUp.addItemWithTitle(title);
  popUp.setPullsDown(false);
  popUp.selectItemAtIndex(popUp.numberOfItems() - 1);
  stage.advance(0.1);

  NSMenuItem* item = popUp.itemAtIndex(popUp.numberOfItems() - 1);
  const float before = stage.value(1);
  if (isDelay)
    dynamic_cast<dely_UIView&>(*stage.editor).menuAction(item);
  else
    dynamic_cast<tmpt_UIView&>(*stage.editor).justMenuChanged(item);
  stage.checkParameters();
  must(jxTitleRatio(title) || stage.value(1) == before, "a title without a ratio sets nothing");
  stage.advance(0.1);
  return 0;
}
