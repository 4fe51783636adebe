#pragma once

#include <string>

namespace ZEL::tests::oracle {

enum class Kind { Model, Package, Class, Property, Association, Constraint, Expression, Operation, Comment };

constexpr int kNothing = -1; ///< no object
constexpr int kModel = 0;    ///< the number of the model itself
/// Objects of another model have numbers from here on. They are referred to by ends that nothing else depends on, and
/// never looked at.
constexpr int kFirstForeign = 1'000'000;
inline constexpr Kind kForeignKinds[] = {Kind::Class, Kind::Property, Kind::Comment}; ///< one of each

inline char const * const kRoot = "root deviant";

/// One operation, by its name, with those of the arguments that it has.
struct Step {
    std::string what{};
    std::string deviant{};
    int object = kNothing;
    std::string property{};
    int value = 0; ///< an object, a level, a length or a listener
    int index = 0; ///< in a list; of an end, whether it goes to the front
    std::string text{};
    Kind kind = Kind::Package;
};

} // namespace ZEL::tests::oracle
