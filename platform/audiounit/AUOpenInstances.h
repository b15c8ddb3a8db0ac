#pragma once

class AUEffectBase;

/// The effects that are there. A host may close an effect under its editor: every call on it is refused from
/// then on, in place of touching memory that is gone.
namespace AUOpenInstances {

/// Any thread; throws std::length_error when there are 4096 already.
void add(const AUEffectBase* effect);
/// The thread that ends the effect, while no other calls it.
void remove(const AUEffectBase* effect);
/// Any thread, without a lock. One that is not there any more is told of in the log, once.
bool contains(const AUEffectBase* effect) noexcept;

}  // namespace AUOpenInstances
