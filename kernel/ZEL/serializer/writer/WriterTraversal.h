#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/writer/ContextPrinter.h>
#include <ZEL/serializer/writer/ElementsAtTop.h>
#include <ZEL/serializer/writer/ObjectContexts.h>
#include <ZEL/serializer/writer/ObjectView.h>
#include <ZEL/serializer/writer/PropertyPartition.h>
#include <ZEL/serializer/writer/StraightWriter.h>
#include <ZEL/serializer/writer/VisitableContext.h>
#include <ZEL/serializer/writer/XmiWriter.h>

#include <cstddef>
#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

namespace HASP {
class XmlWriter;
} // namespace HASP

namespace ZEL::Serializer {

/// The functions of a writer that a caller can replace; an empty one stands for the default.
struct WriterFunctions {
    XmiWriter::ContextSequenceCreator createContexts;
    XmiWriter::VisitableGenerator before;
    XmiWriter::VisitableGenerator children;
    XmiWriter::VisitableGenerator after;

    [[nodiscard]] bool areDefaults() const { return !createContexts && !before && !children && !after; }
};

/// One run of a writer over a containment tree: a traversal that collects, and one that writes.
///
/// The objects being visited are kept on a stack of its own, so that the depth of a model is limited by memory alone.
class WriterTraversal {
public:
    /// All arguments must outlive the run. `isPlain`: nobody but the standard dialect takes part in the traversals.
    WriterTraversal(HASP::XmlWriter & xml, XmiWriterSettings const & settings, TransformerRegistry const & transformers,
                    WriterFunctions const & functions, bool isPlain);

    /// Finds the namespaces in use and the stereotype instances, and lets the Transformers see every object.
    void collect(ImmutableClassObject const & object);
    /// Writes the document but for its end.
    void write(ImmutableClassObject const & object);

private:
    struct Frame;
    using Step = void (WriterTraversal::*)(Frame &);

    /// An object under way. Used again and again for objects of one depth, so that storage is made but once.
    struct Frame {
        void startChildren(std::vector<ImmutableClassObject> objects) noexcept {
            children = std::move(objects);
            nextChild = 0;
        }

        ImmutableClassObject object;
        WrittenProperty const * property = nullptr;    ///< through which it is reached; null at the top
        Context const * parent = nullptr;              ///< of the object that holds it; null at the top
        PropertyPartition const * partition = nullptr; ///< null if the contexts come from a caller's function
        VisitableContext visitable;
        ContextSequence sequence; ///< as it came from the creator
        std::size_t openElements = 0;
        std::vector<ImmutableClassObject> children; ///< those at hand, visited one after the other
        std::size_t nextChild = 0;
        WrittenProperty const * childProperty = nullptr; ///< through which they are reached
        std::size_t nextProperty = 0;
        Step step = nullptr; ///< what comes once the children at hand have been visited; null at the end
    };

    void visit(ImmutableClassObject const & object);
    void push(ImmutableClassObject const & object, WrittenProperty const * property, Context const * parent);
    // The steps of an object, in order; each names the next one.
    void create(Frame & frame);
    void runElement(Frame & frame);
    void runNextProperty(Frame & frame);
    void runAfter(Frame & frame);
    void endElement(Frame & frame);

    /// The objects that a caller's generator returns become the children at hand.
    void generate(Frame & frame, XmiWriter::VisitableGenerator const & generator);
    /// Shows a caller's generator the place of the object itself.
    void showOwnPlace(Frame & frame) const;
    /// Whether this is the root while it is written.
    [[nodiscard]] bool isRootAtWork(Frame const & frame) const noexcept;
    [[nodiscard]] bool selectNextProperty(Frame & frame, ObjectView const & view);

    void createContextSequence(Frame & frame);
    void collectObject(Frame const & frame, ObjectView const & view);
    /// Finds what stands at the top of the file beside the root, or in place of it.
    void findElementsAtTop(Frame & frame);
    void writePrologue(ImmutableClassObject const & object);
    [[nodiscard]] ContextSequence withOneNamespaceEach(ContextSequence && sequence);
    [[nodiscard]] Context * elementOf(ContextSequence & sequence) const;
    [[nodiscard]] static ContextPrinter::Level levelOf(Frame const & frame) noexcept;

    HASP::XmlWriter & fXml;
    XmiWriterSettings const & fSettings;
    TransformerRegistry const & fTransformers;
    WriterFunctions const & fFunctions;
    bool fIsPlain; ///< objects within others are written straight
    bool const fHasDefaults;
    bool fIsWriting = false;
    bool fIsRootDone = false; ///< from then on, top-level elements are other ones, and stereotype instances
    ContextPrinter::Namespaces fNamespaces;
    RemainderWriter::Collected fKept;                         ///< of what is kept with objects
    std::unordered_set<PropertyPartition const *> fCollected; ///< whose namespaces are known
    ElementsAtTop fElementsAtTop;
    std::vector<ImmutableClassObject> fStereotypeInstances;
    PartitionCache fPartitions;
    ObjectContexts fContexts;
    ContextPrinter fPrinter;
    RemainderWriter fRemainders;
    StraightWriter fStraight;
    std::vector<std::unique_ptr<Frame>>
        fFrames;            ///< by depth; children point at the Context of the object that holds them
    std::size_t fDepth = 0; ///< number of objects under way
};

} // namespace ZEL::Serializer
