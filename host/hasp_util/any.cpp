#include <hasp_util/any.h>

namespace HASP {

bad_any_cast::~bad_any_cast() = default;

char const * bad_any_cast::what() const noexcept { return "bad_any_cast"; }

} // namespace HASP
