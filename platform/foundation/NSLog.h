#pragma once

#include <functional>
#include <string_view>

/// Appends one line to the log's sink. Never throws. Any thread but the audio thread.
void NSLog(std::string_view line) noexcept;

/// Like NSLog, but a line that was logged so before is dropped: for what would repeat at every drawing or
/// change.
void NSLogOnce(std::string_view line) noexcept;

using NSLogSink = std::function<void(std::string_view line)>;

/// Where lines go; standard error at first. A sink that is set has not been told anything yet. Returns the
/// sink that was in force. A null sink restores standard error.
NSLogSink NSSetLogSink(NSLogSink sink);
