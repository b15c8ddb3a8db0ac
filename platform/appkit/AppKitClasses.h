#pragma once

/// Lists the classes of this layer that an interface description may name. A host calls it once, before it
/// opens a bundle; again does nothing.
void NSRegisterAppKitClasses();
