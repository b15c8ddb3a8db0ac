#pragma once

#include <memory>
#include <string_view>

#include "CoreAudioTypes.h"
#include "Handle.h"

class AUEffectBase;
struct ComponentRecord;

/// What can be opened, and what has been. Both are opaque to callers. All functions here: any thread but
/// the audio thread.
using Component = const ComponentRecord*;
using ComponentInstance = AUEffectBase*;

/// Names one component, or, as a pattern, several: a type, subtype or manufacturer of 0 matches every
/// one; only the flags under the mask count.
struct ComponentDescription {
  OSType componentType = 0;
  OSType componentSubType = 0;
  OSType componentManufacturer = 0;
  UInt32 componentFlags = 0;
  UInt32 componentFlagsMask = 0;
};

using ComponentFactory = std::unique_ptr<AUEffectBase> (*)();

/// Adds a component for the life of the process. `name` is UTF-8 and is kept in Mac Roman, at most 255
/// bytes; characters that do not exist there become '?'. Registering the same description with the same
/// factory again gives the component that there is.
Component RegisterComponent(const ComponentDescription& description, std::string_view name, SInt32 version,
                            ComponentFactory factory);

/// The first match after `previous` in order of registration (null: from the start); null when there is
/// none.
Component FindNextComponent(Component previous, const ComponentDescription* pattern);

/// Any output may be null. The name arrives length-prefixed (one length byte, then Mac Roman) in a handle
/// that is resized to fit; the info and icon handles become empty. A null component or instance is
/// paramErr and leaves the outputs alone.
OSStatus GetComponentInfo(Component component, ComponentDescription* description, Handle name, Handle info,
                          Handle icon);
OSStatus GetComponentInfo(ComponentInstance instance, ComponentDescription* description, Handle name,
                          Handle info, Handle icon);

/// Major, minor and bug-fix number, 0xMMMMmmbb; 0 for null.
SInt32 GetComponentVersion(ComponentInstance instance);

/// A new instance at factory defaults, not initialised; the caller closes it.
OSStatus OpenAComponent(Component component, ComponentInstance* instance);
/// Ends the instance. Registrations of listeners about it and events that wait for delivery go with it.
/// Nobody may use the instance meanwhile; whoever does afterwards is refused, until the next instance is
/// given its address. Allowed from inside a listener's dispatch.
OSStatus CloseComponent(ComponentInstance instance);
