#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ReportBuilder.h>
#include <ZEL/sequences/SequenceBuilder.h>

#include <vector>

namespace ZEL::internal {

namespace {

/// Handles of class `T` on the bodies, seen in `deviant`.
template <class T> Sequence<T> makeSequence(std::vector<ClassObjectIntf *> const & bodies, Deviant deviant) {
    Sequence<T> result = Generic::SequenceBuilder{deviant, 0, false, true}.create<T>();
    for (ClassObjectIntf * const body : bodies) {
        result.push_back(T(body, deviant));
    }
    return result;
}

template <class T, class C>
ReportOfChanges<T, C> makeReport(ChangedBodies const & bodies, Deviant target, Deviant source) {
    return ReportOfChanges<T, C>(makeSequence<T>(bodies.created, target), makeSequence<T>(bodies.deleted, target),
                                 makeSequence<T>(bodies.modified, target), source);
}

} // namespace

ReportOfChanges<ClassObject, FALSE_TYPE> makeWritableReport(ChangedBodies const & bodies, Deviant target,
                                                            Deviant source) {
    return makeReport<ClassObject, FALSE_TYPE>(bodies, target, source);
}

ReportOfChanges<ImmutableClassObject, TRUE_TYPE> makeReadableReport(ChangedBodies const & bodies, Deviant target,
                                                                    Deviant source) {
    return makeReport<ImmutableClassObject, TRUE_TYPE>(bodies, target, source);
}

} // namespace ZEL::internal
