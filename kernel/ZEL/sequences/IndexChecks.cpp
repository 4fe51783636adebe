#include <ZEL/base/Exception.h>
#include <ZEL/sequences/IndexChecks.h>

namespace ZEL::internal {

void raiseSequenceIndexIsNegative() { raiseInternalError("sequence index must be positive"); }

void raiseSequenceIndexIsTooLarge() { raiseInternalError("sequence index out of bounds"); }

void raiseSequenceIsEmpty() { raiseInternalError("sequence is empty"); }

} // namespace ZEL::internal
