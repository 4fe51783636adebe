#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/writer/ContextPrinter.h>
#include <ZEL/serializer/writer/ElementsAtTop.h>
#include <ZEL/serializer/writer/ObjectContexts.h>
#include <ZEL/serializer/writer/PropertyPartition.h>
#include <ZEL/serializer/writer/RemainderWriter.h>
#include <ZEL/serializer/writer/WritePlan.h>

#include <hasp_util/XmlName.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace HASP {
class XmlWriter;
} // namespace HASP

namespace ZEL::Serializer {

/// Writes what objects contain straight from their states, as Contexts would be printed that no rule fits: for a run in
/// which nobody but the standard dialect takes part.
///
/// Contexts are made of what is rare alone: values and links that stand in elements of their own. The objects being
/// visited are kept on a stack, so that the depth of a model is limited by memory alone.
class StraightWriter {
public:
    /// What is found before anything is written.
    struct Collected {
        ContextPrinter::Namespaces & namespaces;
        RemainderWriter::Collected & kept;
        std::vector<ImmutableClassObject> & stereotypeInstances;
    };

    /// All arguments must outlive the run.
    StraightWriter(HASP::XmlWriter & xml, TransformerRegistry const & transformers, PartitionCache & partitions,
                   ObjectContexts & contexts, ContextPrinter & printer)
        : fXml(xml),
          fTransformers(transformers),
          fPartitions(partitions),
          fContexts(contexts),
          fPrinter(printer),
          fRemainders(xml, contexts, printer) {}

    /// Finds the namespaces in use and the stereotype instances in the object and all that it contains. Stops and returns
    /// false at an object that cannot be written in this way: a rule may fit it, it has properties that stand in
    /// `xmi:Extension`, or XML cannot hold one of its names.
    [[nodiscard]] bool collect(ImmutableClassObject const & object, Collected const & collected);
    /// Another encoding is in use from here on.
    void forgetNames() noexcept;
    /// Writes what the object contains, but for parts of its own that are written elsewhere. All must have been
    /// collected, and the element of the object must be open.
    void writeParts(ImmutableClassObject const & object, ElementsAtTop const & elsewhere);

private:
    /// An object under way.
    struct Level {
        internal::BodyCore const * body = nullptr;
        internal::StateCore const * state = nullptr;
        WritePlan * plan = nullptr;
        std::size_t nextPart = 0;
        WritePlan::Part const * part = nullptr; ///< the one at hand; its objects that come next are in one of these:
        internal::PersistentSequence::Cursor next;
        internal::PersistentSequence::Cursor end;
        NSInterface::ObjectIntf const * single = nullptr;
        std::vector<ImmutableClassObject> elsewhere; ///< of a part without a field
        std::size_t nextElsewhere = 0;
        std::size_t openElements = 0;
    };
    /// Links that stand in an attribute.
    struct LinkText {
        HASP::XmlName const * name;
        std::size_t begin; ///< in `fLinks`
        std::size_t size;
    };

    /// Null for a class whose objects cannot be written in this way.
    [[nodiscard]] WritePlan * planOf(internal::BodyCore const & body);
    [[nodiscard]] bool isUnusual(PropertyPartition const & partition) const;
    [[nodiscard]] bool collectObject(internal::BodyCore const & body, Collected const & collected);

    /// The object becomes the one whose parts are visited, from this part on.
    Level & push(internal::BodyCore const & body, internal::StateCore const & state, WritePlan & plan,
                 std::size_t firstPart);
    /// The next object in the parts of the level's object, null if there is none.
    [[nodiscard]] internal::BodyCore const * nextChild(Level & level) const;
    void enter(Level & level, WritePlan::Part const & part) const;

    void writeObject(internal::BodyCore const & body, WritePlan::Part const & part);
    /// Reads what stands in elements, and the texts of links, before the tag that has to say whether there are elements.
    void readLinks(internal::BodyCore const & body, internal::StateCore const & state, WritePlan const & plan);
    void readOtherLinks(internal::BodyCore const & body, WritePlan const & plan, WritePlan::Links const & links);
    [[nodiscard]] static Context parentOf(WritePlan const & plan);
    [[nodiscard]] bool readValues(internal::BodyCore const & body, WritePlan const & plan);
    /// False, with something appended, if links of the field need a closer look.
    [[nodiscard]] bool appendLinks(internal::FieldDescriptor const & field, internal::StateCore const & state);
    [[nodiscard]] bool appendLink(NSInterface::ObjectIntf const & target);
    void writeType(WritePlan & plan);
    void writeValue(internal::BodyCore const & body, internal::StateCore const & state, WritePlan::Value & value);
    void writeBoxed(internal::BodyCore const & body, WritePlan::Value const & value);
    void writeLiteral(internal::BodyCore const & body, WritePlan::Value & value, std::size_t index);
    void writeUnlessDefault(WritePlan::Value const & value, std::string_view text);
    [[nodiscard]] ImmutableClassObject handleOf(internal::BodyCore const & body) const;

    HASP::XmlWriter & fXml;
    TransformerRegistry const & fTransformers;
    PartitionCache & fPartitions;
    ObjectContexts & fContexts;
    ContextPrinter & fPrinter;
    RemainderWriter fRemainders;
    Deviant fDeviant;

    std::unordered_map<internal::ClassDescriptor const *, std::unique_ptr<WritePlan>> fPlans;
    internal::ClassDescriptor const * fLast = nullptr; ///< the class asked for last, and its plan
    WritePlan * fLastPlan = nullptr;

    std::vector<Level> fLevels; ///< by depth; beyond `fDepth`, kept for their storage
    std::size_t fDepth = 0;

    // What the file calls an object's id and class; made once the namespaces have been declared.
    bool fHasNames = false;
    HASP::XmlName fIdName;
    HASP::XmlName fTypeName;

    internal::ModelCore const * fModel = nullptr; ///< the model at hand, whose objects are named by their ids alone
    bool fHasLinks = false;                       ///< of that model

    // Of the object at hand.
    std::string fId;
    std::string fLinks;
    std::vector<LinkText> fLinkTexts;
    ContextSequence fElements;
};

} // namespace ZEL::Serializer
