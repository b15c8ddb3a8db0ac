// The cairo functions that draw, in front of those of the library: each passes the call on, and to the tape
// that is being recorded. Functions that only ask are left out.

#include <dlfcn.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "CairoTape.h"

namespace {

using Kind = CairoTape::Kind;

template <class Function>
Function* next(const char* name) {
  void* found = dlsym(RTLD_NEXT, name);
  if (!found) throw std::runtime_error(std::string(name) + ": cairo has no such function");
  return reinterpret_cast<Function*>(found);
}

// An argument as it is kept: numbers as they are, a matrix by value, objects by reference.
template <class T>
struct Kept {
  T value;
  T in(CairoTape::Made&) { return value; }
};
template <>
struct Kept<const cairo_matrix_t*> {
  explicit Kept(const cairo_matrix_t* matrix) : value(*matrix) {}
  cairo_matrix_t value;
  const cairo_matrix_t* in(CairoTape::Made&) { return &value; }
};
template <class Object, Kind kind>
struct KeptObject {
  explicit KeptObject(Object* object) : reference(CairoTape::current()->referenceTo(object, kind)) {}
  CairoTape::Reference reference;
  Object* in(CairoTape::Made& made) { return static_cast<Object*>(reference.in(made)); }
};
template <>
struct Kept<cairo_t*> : KeptObject<cairo_t, Kind::context> {
  using KeptObject::KeptObject;
};
template <>
struct Kept<cairo_surface_t*> : KeptObject<cairo_surface_t, Kind::surface> {
  using KeptObject::KeptObject;
};
template <>
struct Kept<cairo_pattern_t*> : KeptObject<cairo_pattern_t, Kind::pattern> {
  using KeptObject::KeptObject;
};

template <class... Arguments>
void passOn(void (*call)(Arguments...), Arguments... arguments) {
  call(arguments...);
  if (CairoTape* tape = CairoTape::current())
    tape->add([call, ... kept = Kept<Arguments>{arguments}](CairoTape::Made& made) mutable {
      call(kept.in(made)...);
    });
}

template <class Object, class... Arguments>
Object* make(Kind kind, Object* (*call)(Arguments...), Arguments... arguments) {
  Object* const object = call(arguments...);
  CairoTape* const tape = CairoTape::current();
  if (tape && !(kind == Kind::lentPattern && tape->hasMade(object, Kind::pattern)))
    tape->add([call, number = tape->numberMade(object, kind), ... kept = Kept<Arguments>{arguments}](
                  CairoTape::Made& made) mutable { made[number] = call(kept.in(made)...); });
  return object;
}

template <class Object>
void destroy(void (*call)(Object*), Object* object) {
  CairoTape* const tape = CairoTape::current();
  if (const auto number = tape ? tape->forget(object) : std::nullopt)
    tape->add([call, number = *number](CairoTape::Made& made) {
      call(static_cast<Object*>(std::exchange(made[number], nullptr)));
    });
  call(object);
}

}  // namespace

#define PASSED_ON(name, parameters, ...)                   \
  void name parameters {                                   \
    static auto* const call = next<decltype(name)>(#name); \
    passOn(call, __VA_ARGS__);                             \
  }
#define MADE(object, kind, name, parameters, ...)          \
  object* name parameters {                                \
    static auto* const call = next<decltype(name)>(#name); \
    return make(kind, call, __VA_ARGS__);                  \
  }
#define DESTROYED(name, object)                            \
  void name(object* o) {                                   \
    static auto* const call = next<decltype(name)>(#name); \
    destroy(call, o);                                      \
  }

extern "C" {

MADE(cairo_t, Kind::context, cairo_create, (cairo_surface_t * s), s)
MADE(cairo_surface_t, Kind::surface, cairo_image_surface_create, (cairo_format_t f, int w, int h), f, w, h)
MADE(cairo_pattern_t, Kind::pattern, cairo_pattern_create_linear, (double a, double b, double c, double d), a,
     b, c, d)
MADE(cairo_pattern_t, Kind::lentPattern, cairo_get_source, (cairo_t * c), c)
DESTROYED(cairo_destroy, cairo_t)
DESTROYED(cairo_surface_destroy, cairo_surface_t)
DESTROYED(cairo_pattern_destroy, cairo_pattern_t)

PASSED_ON(cairo_save, (cairo_t * c), c)
PASSED_ON(cairo_restore, (cairo_t * c), c)
PASSED_ON(cairo_translate, (cairo_t * c, double x, double y), c, x, y)
PASSED_ON(cairo_scale, (cairo_t * c, double x, double y), c, x, y)
PASSED_ON(cairo_transform, (cairo_t * c, const cairo_matrix_t* m), c, m)
PASSED_ON(cairo_set_matrix, (cairo_t * c, const cairo_matrix_t* m), c, m)
PASSED_ON(cairo_identity_matrix, (cairo_t * c), c)
PASSED_ON(cairo_set_operator, (cairo_t * c, cairo_operator_t o), c, o)
PASSED_ON(cairo_set_antialias, (cairo_t * c, cairo_antialias_t a), c, a)
PASSED_ON(cairo_set_source, (cairo_t * c, cairo_pattern_t* p), c, p)
PASSED_ON(cairo_set_source_rgba, (cairo_t * c, double r, double g, double b, double a), c, r, g, b, a)
PASSED_ON(cairo_set_source_surface, (cairo_t * c, cairo_surface_t* s, double x, double y), c, s, x, y)
PASSED_ON(cairo_pattern_set_filter, (cairo_pattern_t * p, cairo_filter_t f), p, f)
PASSED_ON(cairo_pattern_set_extend, (cairo_pattern_t * p, cairo_extend_t e), p, e)
PASSED_ON(cairo_pattern_add_color_stop_rgb, (cairo_pattern_t * p, double o, double r, double g, double b), p,
          o, r, g, b)
PASSED_ON(cairo_set_line_width, (cairo_t * c, double w), c, w)
PASSED_ON(cairo_set_line_cap, (cairo_t * c, cairo_line_cap_t l), c, l)
PASSED_ON(cairo_set_line_join, (cairo_t * c, cairo_line_join_t l), c, l)
PASSED_ON(cairo_set_miter_limit, (cairo_t * c, double l), c, l)
PASSED_ON(cairo_new_path, (cairo_t * c), c)
PASSED_ON(cairo_move_to, (cairo_t * c, double x, double y), c, x, y)
PASSED_ON(cairo_line_to, (cairo_t * c, double x, double y), c, x, y)
PASSED_ON(cairo_curve_to, (cairo_t * c, double x1, double y1, double x2, double y2, double x, double y), c,
          x1, y1, x2, y2, x, y)
PASSED_ON(cairo_arc, (cairo_t * c, double x, double y, double r, double a, double b), c, x, y, r, a, b)
PASSED_ON(cairo_rectangle, (cairo_t * c, double x, double y, double w, double h), c, x, y, w, h)
PASSED_ON(cairo_close_path, (cairo_t * c), c)
PASSED_ON(cairo_fill, (cairo_t * c), c)
PASSED_ON(cairo_stroke, (cairo_t * c), c)
PASSED_ON(cairo_clip, (cairo_t * c), c)
PASSED_ON(cairo_paint, (cairo_t * c), c)
PASSED_ON(cairo_paint_with_alpha, (cairo_t * c, double a), c, a)
PASSED_ON(cairo_mask_surface, (cairo_t * c, cairo_surface_t* s, double x, double y), c, s, x, y)

}  // extern "C"
