#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/metamodel/ReportOfChanges.h>

namespace ZEL {

class ClassObject;
class ImmutableClassObject;

namespace internal {

/// Handles on the bodies, in sequences bound to `target`, for modifiers and helpers.
[[nodiscard]] ZEL_API ReportOfChanges<ClassObject, FALSE_TYPE> makeWritableReport(ChangedBodies const & bodies,
                                                                                  Deviant target, Deviant source);
/// The same for validators and observers.
[[nodiscard]] ZEL_API ReportOfChanges<ImmutableClassObject, TRUE_TYPE>
makeReadableReport(ChangedBodies const & bodies, Deviant target, Deviant source);

} // namespace internal
} // namespace ZEL
