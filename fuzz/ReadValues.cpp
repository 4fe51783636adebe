// Any text as a value of every type: a value that is read is written as a text of the same value.

#include "Support.h"

#include <ZEL/String.h>
#include <ZEL/values/ValueObject.h>
#include <ZEL/values/ValueObjectFactory.h>

#include <exception>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    std::string const text(reinterpret_cast<char const *>(data), size);
    for (char const * const type : {"ZEL.Boolean", "ZEL.Integer", "ZEL.UnlimitedNatural", "ZEL.Real", "ZEL.Single",
                                    "ZEL.Double", "ZEL.String", "ZEL.Argument", "ZEL.VisibilityKind",
                                    "ZEL.ParameterDirectionKind", "ZEL.PackageMergeKind", "ZEL.PersistenceKind"}) {
        fuzz::require(ZEL::ValueObjectFactory::isValueObjectType(type), std::string(type) + " is a type");
        std::string first;
        try {
            first = ZEL::ValueObjectFactory::createFromString(type, text).toString().str();
        } catch (std::exception const &) {
            continue;
        }
        std::string const second = ZEL::ValueObjectFactory::createFromString(type, first).toString().str();
        fuzz::require(first == second, std::string(type) + ": '" + first + "' is read as '" + second + '\'');
    }
    return 0;
}
