#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>

#include <string>

namespace ZEL::internal {

/// To be called while a failure of a reflective access to `property` of `object` is handled.
///
/// A failure without a text of its own, because an element or a boxed value is not of the class that is needed, becomes
/// one that says what was found and what is expected: of `value`, if that was to be written, or of the object itself.
/// Every other failure is passed on as it is. `value` is null for an access that writes none.
[[noreturn]] void raiseReflectionError(ClassObjectIntf const & object, Deviant deviant,
                                       ImmutableProperty const & property, Object const * value);

/// For the operations that write a derived property, by the name of the form that is called.
[[noreturn]] void raiseReadOnly(std::string const & property, std::string const & form = "set");
[[noreturn]] void raiseNotRemovable(std::string const & property);

} // namespace ZEL::internal
