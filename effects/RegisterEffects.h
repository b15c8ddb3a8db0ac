#pragma once

/// Makes the effects of this folder known as components: type 'aufx', manufacturer 'Tovn', version 1.6.
/// Calling it again changes nothing.
void RegisterEffects();
