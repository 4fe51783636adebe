#pragma once

#include <ZEL/Argument.h>
#include <ZEL/Double.h>
#include <ZEL/Integer.h>
#include <ZEL/PackageMergeKind.h>
#include <ZEL/ParameterDirectionKind.h>
#include <ZEL/PersistenceKind.h>
#include <ZEL/Real.h>
#include <ZEL/Single.h>
#include <ZEL/String.h>
#include <ZEL/TypeInfoRegistry.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/VisibilityKind.h>

#include <exception>
#include <string>

namespace ZEL::Test {

/// The text of the exception that `action` raises, "(nothing)" if it raises none.
template <class Action> std::string textOfException(Action action) {
    try {
        action();
    } catch (std::exception const & failure) {
        return failure.what();
    }
    return "(nothing)";
}

} // namespace ZEL::Test
