#pragma once

#include <utility>

namespace HASP {

template <class First, class Second> using GPair = std::pair<First, Second>;

} // namespace HASP
