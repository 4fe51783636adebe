#include <ZEL/Now.h>

#include <boost/date_time/posix_time/posix_time.hpp>

namespace ZEL::util {

std::string now() {
    std::string text = boost::posix_time::to_simple_string(boost::posix_time::microsec_clock::universal_time());
    if (text.find('.') == std::string::npos) {
        // A fraction of zero is left out.
        text += ".000000";
    }
    return text;
}

} // namespace ZEL::util
