#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/TypedElement.h>

#include <string_view>

namespace ZEL::Serializer {

class FileLinks;
class ReadReport;

/// A model at the end of the run that has read it, for rules that make more of a file than its elements say. The run's
/// transaction is open, so that all they change is a part of the read. Lives as long as the call of the hook.
class ZEL_API ReadFile {
public:
    ReadFile(Model const & model, FileLinks & links, ReadReport & report)
        : fModel(model), fLinks(links), fReport(report) {}
    ReadFile(ReadFile const &) = delete;
    ReadFile & operator=(ReadFile const &) = delete;

    [[nodiscard]] Model const & model() const noexcept { return fModel; }
    /// The object with this id in the file; invalid if there is none.
    [[nodiscard]] ClassObject find(std::string_view id) const;
    /// Makes the id that of an object that the file names, and that had no element of its own.
    void enter(ClassObject const & object, std::string_view id);
    /// Sets the type of an element that has none. A link of the file that led nowhere has led here then: it is neither
    /// kept with the element nor reported.
    void setType(TypedElement const & element, Type const & type);

private:
    Model const fModel;
    FileLinks & fLinks;
    ReadReport & fReport;
};

} // namespace ZEL::Serializer
