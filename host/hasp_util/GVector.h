#pragma once

#include <vector>

namespace HASP {

template <class T> using GVector = std::vector<T>;

} // namespace HASP
