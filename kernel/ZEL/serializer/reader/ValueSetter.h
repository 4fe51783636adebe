#pragma once

#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/MetaClassCache.h>
#include <ZEL/serializer/reader/ReadReport.h>
#include <ZEL/serializer/reader/Remainders.h>

#include <string>
#include <string_view>

namespace ZEL::Serializer {

/// Sets values, parts and links through the Merger of a run, and reports what is rejected and what is replaced.
///
/// `isFurther` means in all operations that the property takes one value only, and that the file has had one before.
class ValueSetter {
public:
    /// The report must outlive it.
    explicit ValueSetter(ReadReport & report) : fReport(report) {}

    /// Begins a run with this Merger, which must live as long as the run. `kept`: where it notes what properties do not
    /// take; null if that is lost.
    void begin(Merger & merger, Remainders * kept) noexcept {
        fMerger = &merger;
        fKept = kept;
    }
    [[nodiscard]] Remainders * kept() const noexcept { return fKept; }
    [[nodiscard]] MetaClassCache & metaClasses() const noexcept { return fMerger->metaClasses(); }

    // False if the property does not take it; `setPart` leaves the report of that to the caller.
    bool setText(ClassObject const & object, MetaProperty const & property, std::string_view text, bool isFurther);
    // `isNew`: the part has been made for this, and stands nowhere yet.
    /// Sets a derived property unless the object holds something that it is derived from.
    void setDerived(ClassObject const & object, MetaProperty const & property, std::string_view text);
    bool setPart(ClassObject const & object, MetaProperty const & property, ClassObject const & part,
                 MetaClass const & partClass, bool isNew, bool isFurther);
    bool setLink(ClassObject const & object, MetaProperty const & property, ClassObject const & target, bool isFurther);

    void reportUnresolved(ClassObject const & object, MetaProperty const & property);
    /// The property takes one value only, and the file has another one.
    void reportFurther(ClassObject const & object, MetaProperty const & property);

private:
    bool set(ClassObject const & object, MetaProperty const & property, ClassObject const & value,
             MetaClass const & valueClass, bool isNew);
    void reportReplaced(ClassObject const & object, MetaProperty const & property);
    void reportRejected(ClassObject const & object, MetaProperty const & property);
    [[nodiscard]] std::string labelOf(ClassObject const & object, MetaProperty const & property) const;

    ReadReport & fReport;
    Merger * fMerger = nullptr;
    Remainders * fKept = nullptr;
};

} // namespace ZEL::Serializer
