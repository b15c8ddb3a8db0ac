#pragma once

/// What hands do to an editor and what reaches its effect, in any window and in any host. Places within a
/// graph are whole points of motion from a handle, since a screen has whole pixels.
struct EditorGesture {
  const char *effect, *script, *heard;
};

inline constexpr EditorGesture editorGestures[] = {
    {"sdly", "press inToOutDelay.knob; drag 0 400; wait 1; release", "0 = 44100"},
    {"sdly", "set 0 30000; wait 0.1; click inToOutDelay.knob option", "0 = 0"},
    {"sdly", "wheel inToOutDelay.knob 1", "0 = 882"},
    {"sdly", "click inToOutDelay.field; type 441<return>", "0 = 441"},
    {"sdly", "click inToOutDelay.field; type 12.75x<tab>", "0 = 13"},
    {"sdly", "click inToOutDelay.field; type 99999999<return>", "0 = 44100"},
    {"sdly", "click inToOutDelay.field; type 441<escape>", ""},
    {"mcmp", "press threshold2.knob; drag 0 -400; wait 1; release", "6 = -100"},
    {"mcmp", "click eq4.field; type -3.5<return>", "18 = -3.5"},
    {"dely", "click rhythmPopup; type <home><down*8><return>", "1 = 0.25"},
    {"dely", "press graphView#0; drag 400 -200; release", "1 = 3, 2 = -100"},
    {"tmpt", "click justPopup; type <home><down*5><return>", "1 = 701.95"},
    {"tmpt", "click pitch.field; type 7<return>", "1 = 700"},
};
