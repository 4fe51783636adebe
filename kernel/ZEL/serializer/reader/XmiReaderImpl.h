#pragma once

#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/reader/LinkTable.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/MetaClassCache.h>
#include <ZEL/serializer/reader/ParseState.h>
#include <ZEL/serializer/reader/ReadReport.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace HASP {
class Uri;
} // namespace HASP

namespace ZEL::Serializer {

struct Reference;
class StandardReadTransforms;

/// The body of `XmiReader`.
///
/// Each start of an element becomes Contexts, rules rewrite them, and what comes out is applied: elements make objects
/// or enter text, attributes set values, and links wait until the outermost file has been read. Objects are made and
/// changed by the Merger alone. A link into another file reads that file on the spot; each such file has a `ParseState`
/// of its own on a stack, whose depth the settings bound.
class XmiReaderImpl {
public:
    explicit XmiReaderImpl(XmiReaderSettings const & settings);
    ~XmiReaderImpl();
    XmiReaderImpl(XmiReaderImpl const &) = delete;
    XmiReaderImpl & operator=(XmiReaderImpl const &) = delete;

    [[nodiscard]] Object read(std::string const & file);
    [[nodiscard]] TransformerRegistry & transformers() noexcept { return fTransformers; }
    void setMerger(std::shared_ptr<Merger> merger) { fMerger = std::move(merger); }
    [[nodiscard]] std::vector<Model> const & referredModels() const noexcept { return fReferredModels; }
    [[nodiscard]] ReadReport const & report() const noexcept { return fReport; }

private:
    /// What an object lists in a file at one end of links, in one go, where the other end may stand in the file too.
    struct LinkRun {
        ClassObject object;
        MetaProperty const * property = nullptr;
        std::size_t firstTarget = 0;
        std::size_t count = 0;
    };
    /// An object that an element made; both null if it made none.
    struct Made {
        ClassObject object;
        MetaClass * metaClass = nullptr;
        bool isNew = false; ///< made, not found in a model that is merged into
    };
    /// Where links with a certain URI lead.
    struct TargetFile {
        Model registered; ///< a metamodel that is in memory; else invalid
        FileModel * file = nullptr;
        std::unordered_map<std::string, std::int32_t>
            numbers; ///< by the ids in the file that `registered` was read from
    };

    // --- a run (XmiReaderImpl.cpp) -----------------------------------------------------------------------------------
    void reset();
    void discard() noexcept;
    void forgetLinks() noexcept;
    void abortMerger() noexcept;
    void readInto(std::string const & localFile);

    // --- events (XmiReaderImplEvents.cpp) ----------------------------------------------------------------------------
    [[nodiscard]] ParseState & state() noexcept { return fStates.back(); }
    void pushState(std::string const & localFile);
    void popState();
    /// Reads the file of the current state, and gives its model; invalid if it has none.
    Model run();
    void startElement(ParseState & state);
    void endElement(ParseState & state);
    void characters(ParseState & state);
    void makeContexts(ParseState & state, ContextSequence & sequence);
    [[noreturn]] void raiseParseError(ParseState const & state);
    [[nodiscard]] std::string parseErrorOf(ParseState const & state) const;

    // --- applying Contexts (XmiReaderImplProcess.cpp) ----------------------------------------------------------------
    void process(ParseState & state, ContextSequence && sequence);
    void applyContext(ParseState & state, Context & context, bool & entered);
    void enter(ParseState & state, Made && made, Context && context);
    void leave(ParseState & state);
    void startSkipping(ParseState & state);
    [[nodiscard]] static std::string labelOfElement(ParseState const & state);
    [[nodiscard]] bool isOfOtherVersion(ParseState & state, ContextSequence const & applied);
    void applyText(ParseState & state);
    void applyAttribute(ParseState & state, Context const & context);
    void applyValue(ParseState & state, MetaProperty const & property, std::string const & text);
    void applyReference(ParseState & state, Context const & context);

    // --- objects (XmiReaderImplObjects.cpp) --------------------------------------------------------------------------
    [[nodiscard]] Made makeTopLevel(ParseState & state, Context const & context);
    [[nodiscard]] Made makeChild(ParseState & state, Context const & context);
    [[nodiscard]] Made createObject(ParseState & state, Context const & context);
    [[nodiscard]] bool adoptModel(ParseState & state, Model const & model, Context const & context);
    void enterId(ParseState & state, ClassObject const & object, ObjectId const & id);
    static void noteFileId(ClassObject const & object, ObjectId const & id);
    [[nodiscard]] FileModel & fileModelOf(ParseState & state, ClassObject const & object);
    bool setValue(ClassObject const & object, MetaProperty const & property, ClassObject const & value,
                  MetaClass const & valueClass);
    void reportRejected(ClassObject const & object, MetaProperty const & property);
    void reportReplaced(ClassObject const & object, MetaProperty const & property);
    /// Whether the object at hand has got a value for the property from the file already, which takes one only.
    [[nodiscard]] static bool isGiven(ParseState const & state, MetaProperty const & property);
    static void noteGiven(ParseState & state, MetaProperty const & property);
    static void giveUp(Made const & made);
    // Before and after what is left over of a merge is destroyed.
    void noteUncontained();
    void reportUncontained(std::vector<Model> const & models);
    [[nodiscard]] MetaClassCache & metaClasses() noexcept { return fMerger->metaClasses(); }

    // --- links (XmiReaderImplLinks.cpp) ------------------------------------------------------------------------------
    void recordReference(ParseState & state, std::string const & text, ClassObject const & object,
                         MetaProperty const & property);
    void resolveReferences();
    void resolveReference(FileModel & file, PendingLink const & link, Reference & scratch);
    [[nodiscard]] TargetFile const & targetFile(std::string_view uri);
    [[nodiscard]] static ClassObject findInMetaModel(TargetFile const & target, std::string_view uri,
                                                     ObjectId const & id);
    [[nodiscard]] ClassObject findTarget(FileModel & file, PendingLink const & link);
    bool setLink(ClassObject const & object, MetaProperty const & property, ClassObject const & target, bool isFurther);
    void reportUnresolved(PendingLink const & link);
    void noteEnd(PendingLink const & link, ClassObject const & target);
    void restoreEnds();
    static void restoreEnd(ClassObject const & object, MetaProperty const & property,
                           std::vector<ClassObject> const & listed);

    // --- other files (XmiReaderImplFiles.cpp) ------------------------------------------------------------------------
    /// The URI, without fragment, of the file that a link leads to, which has been read then as far as it is to be read;
    /// none, and a log entry, if the link cannot be made absolute.
    [[nodiscard]] std::optional<std::string> followExternal(HASP::Uri const & reference, ClassObject const & object);
    [[nodiscard]] std::string locate(HASP::Uri const & file) const;
    void readExternal(std::string const & uri, std::string const & localFile);
    /// Reads the file of the current state, which a link has led to. False if the read goes on without it.
    [[nodiscard]] bool runExternal(Model & model);
    [[nodiscard]] bool isInRootFolder(std::string const & localFile) const;

    TransformerRegistry fTransformers;
    XmiReaderSettings fSettings;
    unsigned int fNesting = 0; ///< external files that are being read
    std::shared_ptr<Merger> fMerger;
    std::shared_ptr<StandardReadTransforms> fStandardRules; ///< of this run
    std::deque<ParseState> fStates;
    LinkTable fLinks;
    Model fResult;
    std::vector<Model> fReferredModels;
    std::unordered_map<std::string, Model> fParsedModels;        ///< by URI; invalid: not to be read
    std::unordered_map<std::string, std::string> fExternalFiles; ///< base and reference to the URI they lead to
    std::unordered_map<std::string, TargetFile> fTargetFiles;    ///< while links are resolved
    std::pair<std::string const, TargetFile> const * fLastTarget = nullptr;
    std::vector<LinkRun> fLinkRuns; ///< the last one may still grow
    std::vector<ClassObject> fLinkTargets;
    std::unordered_set<NSInterface::ObjectIntf const *> fFormerlyUncontained; ///< in the models that are merged into
    ReadReport fReport;
};

} // namespace ZEL::Serializer
