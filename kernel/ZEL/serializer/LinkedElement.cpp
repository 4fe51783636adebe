#include <ZEL/serializer/LinkedElement.h>

namespace ZEL::Serializer {

bool LinkedElement::isValid() const { return object.isValid() && property.isValid() && target.isValid(); }

} // namespace ZEL::Serializer
