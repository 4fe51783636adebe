#include <ZEL/String.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/tools/TypePredicates.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <vector>

namespace ZEL {

bool inherits(ImmutableClass const & metaClass, ImmutableClass const & superClass) {
    std::vector<ImmutableClass> const classes = internal::withSuperClasses(metaClass);
    return std::find(classes.begin(), classes.end(), superClass) != classes.end();
}

bool inherits(ImmutableClass const & metaClass, std::string const & name) {
    std::vector<ImmutableClass> const classes = internal::withSuperClasses(metaClass);
    return std::any_of(classes.begin(), classes.end(),
                       [&name](ImmutableClass const & one) { return one.getName() == name; });
}

bool isDataType(ImmutableType const & type) {
    return ImmutableDataType(type).getImplementationWithoutAssert() != nullptr;
}

bool isValueObject(ImmutableObject const & object) {
    return ImmutableValueObject(object).getImplementationWithoutAssert() != nullptr;
}

} // namespace ZEL
