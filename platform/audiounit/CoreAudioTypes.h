#pragma once

#include <cstdint>

using UInt32 = uint32_t;
using SInt32 = int32_t;
using UInt64 = uint64_t;
using Float32 = float;
using Float64 = double;
using Boolean = unsigned char;
using OSStatus = SInt32;  // 0 is success
using OSType = UInt32;    // four characters

/// The code that four characters make, first character highest: FourCharCode("aufx").
constexpr OSType FourCharCode(const char (&characters)[5]) {
  OSType code = 0;
  for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(characters[i]);
  return code;
}

inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus paramErr = -50;  // an argument is null or makes no sense
inline constexpr OSStatus badComponentInstance = -3000;

inline constexpr OSType kAudioFormatLinearPCM = FourCharCode("lpcm");
inline constexpr UInt32 kAudioFormatFlagIsFloat = 1;
inline constexpr UInt32 kAudioFormatFlagIsPacked = 8;
inline constexpr UInt32 kAudioFormatFlagIsNonInterleaved = 32;
inline constexpr UInt32 kAudioFormatFlagsNativeFloatPacked =
    kAudioFormatFlagIsFloat | kAudioFormatFlagIsPacked | kAudioFormatFlagIsNonInterleaved;

/// How samples lie in memory. Effects speak one form only: 32-bit floats, one buffer per channel, so that
/// packet, frame and sample are all four bytes.
struct AudioStreamBasicDescription {
  Float64 mSampleRate = 0;  // frames per second
  OSType mFormatID = 0;
  UInt32 mFormatFlags = 0;
  UInt32 mBytesPerPacket = 0;
  UInt32 mFramesPerPacket = 0;
  UInt32 mBytesPerFrame = 0;
  UInt32 mChannelsPerFrame = 0;
  UInt32 mBitsPerChannel = 0;
  UInt32 mReserved = 0;
  friend bool operator==(const AudioStreamBasicDescription&, const AudioStreamBasicDescription&) = default;
};

struct AudioBuffer {
  UInt32 mNumberChannels = 1;
  UInt32 mDataByteSize = 0;
  void* mData = nullptr;  // floats; not owned
};

/// One buffer per channel; this system knows mono and stereo.
inline constexpr UInt32 kAudioMaximumChannels = 2;
struct AudioBufferList {
  UInt32 mNumberBuffers = 0;
  AudioBuffer mBuffers[kAudioMaximumChannels];
};

inline constexpr UInt32 kAudioTimeStampSampleTimeValid = 1;
struct AudioTimeStamp {
  Float64 mSampleTime = 0;  // frames
  UInt64 mHostTime = 0;     // nanoseconds
  UInt32 mFlags = 0;        // which of the fields hold something
};
