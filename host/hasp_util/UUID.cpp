#include <hasp_util/UUID.h>

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

namespace HASP {

std::string UUID::createUuidAsString() {
    // Straight from the system's source of entropy, with no state that a forked process would share.
    boost::uuids::random_generator generator;
    return boost::uuids::to_string(generator());
}

} // namespace HASP
