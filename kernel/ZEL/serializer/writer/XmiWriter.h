#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Callback.h>
#include <ZEL/base/HandedOver.h>
#include <ZEL/base/SmartPtr.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/writer/VisitableContext.h>
#include <ZEL/serializer/writer/XmiWriterSettings.h>

#include <string>

namespace ZEL {
class ImmutableClassObject;
class ImmutableModel;
class ImmutableObject;
class Model;
} // namespace ZEL

namespace ZEL::Serializer {

class Transformer;
class XmiWriterImpl;

/// Writes a model, or one object with all that it contains, as an XMI 2.1 file.
///
/// A handle: copies share one writer. It may run many times, one run at a time; settings and generators stay,
/// Transformers that the caller adds last for one run. The file is first written under its name followed by "~", and
/// replaces an earlier file only when it is whole, as a `SafeFile` does, so that a run that fails leaves the earlier
/// file as it was. Objects without a container (`unparented`), derived properties and values equal to their default are
/// not written.
///
/// All values of a multi-valued property of a data type are written into one element without anything between them, and
/// are read back as one value, unless the settings ask for an element per value. A link to an object that no longer
/// exists leaves out all links of the property. Both are logged.
///
/// A link into another file is made relative to the URI of the object's model; one to what has no file, such as a
/// registered metamodel, stays absolute. The ids in it are those with which a writer writes the other model; if that
/// was read from a file with other ids and is not written itself, see `XmiWriterSettings::setKeepFileIds`.
class ZEL_API XmiWriter {
public:
    /// Returns the Contexts of an object, and sets in the VisitableContext what is to be descended into.
    using ContextSequenceCreator = Callback<ContextSequence(ImmutableClassObject const &, VisitableContext &)>;
    /// Returns the objects to visit next, as children of the object.
    using VisitableGenerator =
        Callback<ImmutableSequence<ImmutableClassObject>(ImmutableClassObject const &, VisitableContext &)>;

    explicit XmiWriter(XmiWriterSettings const & settings = XmiWriterSettings());
    XmiWriter(XmiWriter const & other);
    XmiWriter(XmiWriter && other) noexcept;
    XmiWriter & operator=(XmiWriter const & other);
    XmiWriter & operator=(XmiWriter && other) noexcept;
    ~XmiWriter();

    /// Sets the model's URI to that of the file, outside of any transaction, and writes it. The URI stays set if
    /// writing fails. Throws for an invalid model and for a name that makes no valid URI, before any file is touched.
    /// False, with an entry in the log, when the file could not be produced.
    bool write(std::string const & file, Model model);
    /// Writes to the file that the model's URI names; changes nothing in the model.
    bool write(ImmutableModel const & model);
    /// Writes the object and what it contains. Only a file made of a model can be read back as such.
    bool writeObject(std::string const & file, ImmutableObject const & object);
    /// Why the last of these operations returned false, in the system's words: "No space left on device". Empty
    /// otherwise.
    [[nodiscard]] std::string const & failureReason() const;
    /// The only file with the whole document, if the last of these operations returned false because the document could
    /// not be copied to its place completely. Empty otherwise.
    [[nodiscard]] std::string const & keptFile() const;

    /// The Transformer comes before the dialect's own and is removed after the next run; passed by raw pointer, it is
    /// deleted then; a shared one is passed by `std::shared_ptr`. What it generates before or after an object is input
    /// to the dialect's rules, which drop what they do not match; if it has no rules for that, the dialect generates as
    /// without it.
    void addTransformer(Transformer * transformer);
    void addTransformer(internal::HandedOver<Transformer> transformer);
    void removeTransformer(Transformer * transformer);

    void setContextSequenceCreator(ContextSequenceCreator creator);
    /// Visited ahead of an object's element; nothing by default.
    void setPreVisitableGenerator(VisitableGenerator generator);
    /// Called for each property to descend into; the property's values by default.
    void setVisitableGenerator(VisitableGenerator generator);
    /// Visited after an object's element; by default the collected stereotype instances, after the top element.
    void setPostVisitableGenerator(VisitableGenerator generator);

private:
    struct Shared;
    struct Counting;

    [[nodiscard]] XmiWriterImpl & impl() const noexcept;

    Generic::SmartPtr<Shared, Counting> fShared;
};

} // namespace ZEL::Serializer
