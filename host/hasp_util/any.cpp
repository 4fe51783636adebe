#include <hasp_util/any.h>

namespace HASP {

char const * bad_any_cast::what() const noexcept { return "bad_any_cast"; }

} // namespace HASP
