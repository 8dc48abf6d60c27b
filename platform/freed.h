#pragma once

namespace notewick {

/// Gives an object of a C library back by that library's function: the deleter of a
/// std::unique_ptr.
template <auto FREE>
struct Freed {
  template <class Object>
  void operator()(Object* object) const {
    FREE(object);
  }
};

}  // namespace notewick
