#pragma once

#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/reader/LinkedFiles.h>
#include <ZEL/serializer/reader/Links.h>
#include <ZEL/serializer/reader/Merger.h>
#include <ZEL/serializer/reader/MetaClassCache.h>
#include <ZEL/serializer/reader/ParseState.h>
#include <ZEL/serializer/reader/ReadReport.h>
#include <ZEL/serializer/reader/ValueSetter.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

class StandardReadTransforms;

/// The body of `XmiReader`: the reading of a file.
///
/// Each start of an element becomes Contexts, rules rewrite them, and what comes out is applied: elements make objects
/// or enter text, attributes set values, and links wait until the outermost file has been read. Objects are made and
/// changed by the Merger alone. A link into another file reads that file on the spot, or at the end of its own file if
/// what no property can hold is kept: then a link in the place of a part reads a file into the model at hand. Each open
/// file has a `ParseState` on a stack, whose depth the settings limit.
class XmiReaderImpl {
public:
    explicit XmiReaderImpl(XmiReaderSettings const & settings);
    ~XmiReaderImpl();
    XmiReaderImpl(XmiReaderImpl const &) = delete;
    XmiReaderImpl & operator=(XmiReaderImpl const &) = delete;

    [[nodiscard]] Object read(std::string const & file);
    [[nodiscard]] TransformerRegistry & transformers() noexcept { return fTransformers; }
    void setMerger(std::shared_ptr<Merger> merger) { fMerger = std::move(merger); }
    [[nodiscard]] std::vector<Model> const & referredModels() const noexcept { return fFiles.models(); }
    [[nodiscard]] ReadReport const & report() const noexcept { return fReport; }

private:
    /// An object that an element made; both null if it made none.
    struct Made {
        ClassObject object;
        MetaClass * metaClass = nullptr;
        bool isNew = false; ///< made, not found in a model that is merged into
    };

    // --- a run (this and the events: XmiReaderImpl.cpp) --------------------------------------------------------------
    void readInto(std::string const & localFile);
    /// Lets rules look at the models of the run.
    void showModels();
    void end() noexcept;
    void discard() noexcept;
    void forgetObjects() noexcept;
    /// Reads a file that a link has led to; nothing if the run goes on without it.
    [[nodiscard]] std::optional<Model> readLinked(std::string const & localFile);
    void logUnreadable(std::string const & localFile) const;
    void noteUncontained();
    void reportUncontained(std::vector<Model> const & models);

    // --- events ------------------------------------------------------------------------------------------------------
    [[nodiscard]] ParseState & state() noexcept { return fStates.back(); }
    [[nodiscard]] bool isInLinkedFile() const noexcept { return fStates.size() > 1; }
    void pushState(std::string const & localFile);
    void popState();
    /// Reads the file of the current state, and returns its model; invalid if it has none.
    Model run();
    void startElement(ParseState & state);
    void endElement(ParseState & state);
    void characters(ParseState & state);
    /// What the start of an element says of itself; null for what it does not say.
    struct Head {
        HASP::XmlReader::Attribute const * id = nullptr;
        HASP::XmlReader::Attribute const * type = nullptr;

        [[nodiscard]] bool holds(HASP::XmlReader::Attribute const & attribute) const noexcept {
            return &attribute == id || &attribute == type;
        }
    };
    [[nodiscard]] static Head headOf(ParseState & state);
    /// Does without Contexts what would be done by them, if the element makes a part of the object at hand and no rule
    /// is for any of it. False, and nothing done, otherwise.
    [[nodiscard]] bool startPart(ParseState & state, Head const & head);
    void makeContexts(ParseState & state, Head const & head, ContextSequence & sequence);
    [[noreturn]] void raiseParseError(ParseState const & state);
    [[nodiscard]] std::string parseErrorOf(ParseState const & state) const;

    // --- applying Contexts (this and the objects: XmiReaderImplContexts.cpp) -----------------------------------------
    void process(ParseState & state, ContextSequence && sequence);
    void applyContext(ParseState & state, Context & context, bool & entered);
    void enter(ParseState & state, Made && made, Context && context);
    void leave(ParseState & state);
    void startSkipping(ParseState & state);
    [[nodiscard]] static std::string labelOfElement(ParseState & state);
    [[nodiscard]] static Context const * linkWithoutPlace(ParseState const & state, ContextSequence const & applied);
    [[nodiscard]] bool isOfOtherVersion(ParseState & state, ContextSequence const & applied);
    void applyText(ParseState & state);
    /// An attribute or a link of the object at hand.
    void applyValue(ParseState & state, QualifiedName role, std::string_view text, bool isLink,
                    QualifiedName type = {});
    void applyDerived(ParseState & state);
    void ignoreAttribute(ParseState & state, MetaProperty const & property, std::string_view text);
    void applyNamedParts(ParseState & state);
    [[nodiscard]] bool applyNamedParts(ParseState & state, MetaProperty const & property, std::string_view text);
    /// Of the object at hand. Returns where the last of them waits; a null file if none does.
    struct NotedLink {
        FileLinks * file = nullptr;
        std::size_t place = 0;
    };
    NotedLink noteLinks(ParseState & state, std::string_view text, MetaProperty const & property, QualifiedName type);
    [[nodiscard]] static std::string baseOf(ParseState const & state, ClassObject const & object);
    /// Whether the property takes one value only and the file has had one for the object at hand already.
    [[nodiscard]] static bool isGiven(ParseState const & state, MetaProperty const & property);
    static void noteGiven(ParseState & state, MetaProperty const & property);
    [[nodiscard]] MetaClassCache & metaClasses() const noexcept { return fValues.metaClasses(); }

    // --- what no property can hold -----------------------------------------------------------------------------------
    [[nodiscard]] bool keeps() const noexcept { return fValues.kept() != nullptr; }
    /// The element that was skipped has ended.
    void keepSkipped(ParseState & state);
    /// An attribute in an object, or in the envelope of the file.
    void keepAttribute(ParseState & state, QualifiedName role, std::string_view value);
    void keepBeside(ParseState & state);

    // --- parts in files of their own (XmiReaderImplFragments.cpp) ----------------------------------------------------
    /// Puts the target of a link that stands in the place of a part there. False, and nothing done, if it is no part of
    /// another file, or does not fit; and in files that are linked to.
    [[nodiscard]] bool joinFragment(ParseState & state, Context const & link);
    /// The part, from a file that has been read into this model or can be; null if there is none.
    [[nodiscard]] ClassObject findPart(ParseState & state, MetaProperty const & property, std::string const & target);
    [[nodiscard]] ClassObject readFragment(ParseState & state, MetaProperty const & property, std::string const & uri,
                                           std::string const & localFile, std::string const & id);
    [[nodiscard]] ClassObject moveFromTop(ParseState & state, MetaProperty const & property, FileLinks const & links,
                                          std::string const & id);
    /// The part for whose sake the file is read goes to its place.
    [[nodiscard]] bool placePart(ParseState & state, Made const & made);
    static void appendBeside(ParseState & state, Remainder & beside);
    void giveUpFragment(ParseState & state);
    void forgetFragments(ParseState & state);
    [[nodiscard]] bool isOpen(FileLinks const & links) const;

    // --- objects -----------------------------------------------------------------------------------------------------
    [[nodiscard]] Made makeTopLevel(ParseState & state, Context const & context);
    [[nodiscard]] Made makeFirst(ParseState & state, Context const & context);
    [[nodiscard]] Made makeFurther(ParseState & state, Context const & context);
    void noteClass(ParseState const & state, Made const & made);
    [[nodiscard]] bool placeInModel(ParseState & state, Made const & made);
    [[nodiscard]] Made makeChild(ParseState & state, Context const & context);
    /// As the plan has it; null, and nothing done, if it says nothing, or does not fit the object at hand.
    [[nodiscard]] Made makePlanned(ParseState & state, ElementPlan const & plan, ObjectId const & id);
    void planParts(ParseState const & state, ElementPlan & plan, Made const & made) const;
    [[nodiscard]] Made makePart(ParseState & state, MetaProperty const & property, Context const & context);
    [[nodiscard]] Made createObject(ParseState & state, Context const & context);
    [[nodiscard]] bool adoptModel(ParseState & state, Model const & model, Context const & context);
    [[nodiscard]] static bool isOwnId(ParseState & state, ObjectId const & id);
    void enterId(ParseState & state, ClassObject const & object, ObjectId const & id);
    [[nodiscard]] FileLinks & linksOf(ParseState & state, ClassObject const & object);
    static void giveUp(Made const & made);

    TransformerRegistry fTransformers;
    XmiReaderSettings const fSettings;
    std::shared_ptr<Merger> fMerger;
    std::shared_ptr<StandardReadTransforms> fStandardRules; ///< of this run
    std::deque<ParseState> fStates;
    ReadReport fReport;
    Remainders fRemainders;
    ValueSetter fValues;
    Links fLinks;
    LinkedFiles fFiles;
    Model fResult;
    std::unordered_set<NSInterface::ObjectIntf const *> fFormerlyUncontained; ///< in the models that are merged into
};

} // namespace ZEL::Serializer
