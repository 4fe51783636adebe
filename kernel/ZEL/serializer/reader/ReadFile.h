#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/TypedElement.h>

#include <string>
#include <string_view>
#include <vector>

namespace ZEL::Serializer {

class FileLinks;
class LinkedFiles;
class Links;
class ReadReport;

/// A model at the end of the run that has read it, for rules that make more of a file than its elements say. The run's
/// transaction is open, so that all they change is a part of the read. Lives as long as the call of the hook.
class ZEL_API ReadFile {
public:
    /// All arguments must outlive it.
    ReadFile(Model const & model, std::vector<Model> const & models, Links & links, LinkedFiles & files,
             ReadReport & report);
    ReadFile(ReadFile const &) = delete;
    ReadFile & operator=(ReadFile const &) = delete;

    [[nodiscard]] Model const & model() const noexcept { return fModel; }
    /// Those of all files of the run, this one among them.
    [[nodiscard]] std::vector<Model> const & models() const noexcept { return fModels; }
    /// The object with this id in the file; invalid if there is none.
    [[nodiscard]] ClassObject find(std::string_view id) const;
    /// The object that a link in the file would lead to: an id, or a URI with a fragment. Invalid if it is in no file
    /// of the run.
    [[nodiscard]] ClassObject follow(std::string const & link) const;
    /// Reports a value that is kept, but that nothing can be made of: "Class.property".
    void reportRejected(std::string const & label);
    /// Makes the id that of an object that the file names, and that had no element of its own.
    void enter(ClassObject const & object, std::string_view id);
    /// Sets the type of an element that has none. A link of the file that led nowhere has led here then: it is neither
    /// kept with the element nor reported.
    void setType(TypedElement const & element, Type const & type);

private:
    Model const fModel;
    std::vector<Model> const & fModels;
    Links & fAllLinks;
    FileLinks & fLinks; ///< those of this file
    LinkedFiles & fFiles;
    ReadReport & fReport;
};

} // namespace ZEL::Serializer
