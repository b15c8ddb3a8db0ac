#include "CairoTape.h"

CairoTape* CairoTape::current_ = nullptr;

namespace {

void hold(void* object, CairoTape::Kind kind) {
  if (kind == CairoTape::Kind::context) cairo_reference(static_cast<cairo_t*>(object));
  if (kind == CairoTape::Kind::surface) cairo_surface_reference(static_cast<cairo_surface_t*>(object));
  if (kind == CairoTape::Kind::pattern) cairo_pattern_reference(static_cast<cairo_pattern_t*>(object));
}

void release(void* object, CairoTape::Kind kind) {
  if (kind == CairoTape::Kind::context) cairo_destroy(static_cast<cairo_t*>(object));
  if (kind == CairoTape::Kind::surface) cairo_surface_destroy(static_cast<cairo_surface_t*>(object));
  if (kind == CairoTape::Kind::pattern) cairo_pattern_destroy(static_cast<cairo_pattern_t*>(object));
}

}  // namespace

CairoTape::~CairoTape() {
  rewind();
  for (const auto& [object, kind] : kept_) release(object, kind);
}

void CairoTape::record(const std::function<void()>& work) {
  current_ = this;
  work();
  current_ = nullptr;
  // What lives on belongs to the work: a later one finds it there.
  numbers_.clear();
}

void CairoTape::play() {
  rewind();
  made_.assign(kinds_.size(), nullptr);
  for (const Call& call : calls_) call(made_);
}

void CairoTape::rewind() {
  // Contexts and patterns hold surfaces that were made before them.
  for (size_t i = made_.size(); i-- > 0;)
    if (made_[i]) release(made_[i], kinds_[i]);
  made_.clear();
}

size_t CairoTape::numberMade(void* object, Kind kind) {
  kinds_.push_back(kind);
  return numbers_[object] = kinds_.size() - 1;
}

bool CairoTape::hasMade(void* object, Kind kind) const {
  const auto found = numbers_.find(object);
  return found != numbers_.end() && kinds_[found->second] == kind;
}

std::optional<size_t> CairoTape::forget(void* object) {
  const auto found = numbers_.find(object);
  if (found == numbers_.end()) return std::nullopt;
  const size_t number = found->second;
  numbers_.erase(found);
  return number;
}

CairoTape::Reference CairoTape::referenceTo(void* object, Kind kind) {
  if (const auto found = numbers_.find(object); found != numbers_.end()) return {nullptr, found->second};
  if (kept_.emplace(object, kind).second) hold(object, kind);
  return {object, 0};
}
