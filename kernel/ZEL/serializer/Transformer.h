#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Callback.h>
#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/RuleTable.h>

#include <string>

namespace ZEL {
class ClassObject;
class Model;
} // namespace ZEL

namespace ZEL::Serializer {

class ReadFile;
struct LinkedElement;
struct Reference;

/// A set of rules over Contexts: each dialect of XMI is a subclass, and a caller can add more to a reader or writer.
///
/// A rule is a pattern and a function. For each Context the rule that fits best is chosen, of several the one added
/// last; its function returns what takes the place of the Context. A rule with an empty pattern beats all others. To
/// leave a Context alone a rule returns it; to leave it out with all that lies below it, a copy with the skip state
/// set. A rule may add and remove rules: they count from the next Context on. Besides rules there are hooks, which only
/// the reader calls. A Transformer registers its rules in its constructor and serves one run. Rules that
/// call members of the Transformer itself forbid copying it, since the copies' rules would still call the first one.
class ZEL_API Transformer {
public:
    using OnCreateFunction = Callback<void(Context const &, ClassObject)>;
    using ResolveReferenceFunction = Callback<LinkedElement(std::string const &, Reference const &)>;
    using PostTransformFunction = Callback<void(Model)>;
    using OnReadFunction = Callback<void(ReadFile &)>;
    using TranslateNamespaceFunction = Callback<std::string(std::string const &)>;
    using OnNamespaceFunction = Callback<void(std::string const &, std::string const &)>;

    virtual ~Transformer();

    /// Rewrites: what no rule fits passes through. A Context that a rule returns overwrites an equal earlier one, in
    /// its place, unless that one has the skip state, which drops the new one.
    [[nodiscard]] ContextSequence apply(ContextSequence sequence);
    /// Generates what comes before an object: only what rules return comes out.
    [[nodiscard]] ContextSequence preApply(ContextSequence const & sequence);
    /// Generates what comes after an object.
    [[nodiscard]] ContextSequence postApply(ContextSequence const & sequence);

    // Whether there are rules that generate at all.
    [[nodiscard]] bool hasPreTransforms() const noexcept { return !fPreTransforms.empty(); }
    [[nodiscard]] bool hasPostTransforms() const noexcept { return !fPostTransforms.empty(); }

    /// Whether a Context with this role may be one that a rule fits, in any of the three passes.
    [[nodiscard]] bool mayFit(QualifiedName role) const noexcept {
        return fTransforms.mayFit(role) || fPreTransforms.mayFit(role) || fPostTransforms.mayFit(role);
    }
    /// Whether `apply` would rewrite a Context with these names.
    [[nodiscard]] bool hasTransformFor(Context const & context) const { return fTransforms.find(context) != nullptr; }
    /// Whether there is a hook for links.
    [[nodiscard]] bool resolvesReferences() const noexcept { return !fResolveReference.empty(); }

    // Each removes every rule of its table whose pattern equals the argument.
    void removeTransform(Context const & pattern) { fTransforms.remove(pattern); }
    void removePreTransform(Context const & pattern) { fPreTransforms.remove(pattern); }
    void removePostTransform(Context const & pattern) { fPostTransforms.remove(pattern); }

    /// Called when an object has been read, with all that it contains.
    void onCreate(Context const & context, ClassObject const & object);
    /// `uri` is that of the model from which the link was read. Invalid if there is no hook.
    [[nodiscard]] LinkedElement resolveReference(std::string const & uri, Reference const & reference);
    /// Called when a file has been read; the model is invalid if the file has none.
    void postTransform(Model const & model);
    /// Called at the end of a run for each of its models, when all links are set, and what is kept is with its objects.
    void onRead(ReadFile & file);

    /// Takes the URI of a namespace as a file declares it, and returns the one by which Contexts are to name it; called
    /// once for each declaration, before any rule. `uri` itself if there is no hook.
    [[nodiscard]] std::string translateNamespace(std::string const & uri) const;
    [[nodiscard]] bool translatesNamespaces() const noexcept { return !fTranslateNamespace.empty(); }
    /// Called for each declaration of a namespace in what is read, before its element: the prefix, empty for none, and
    /// the URI as translated.
    void onNamespace(std::string const & prefix, std::string const & uri);
    /// Whether the reader is to keep with its objects what no property can hold, see `Remainder`.
    [[nodiscard]] bool keepsRemainder() const noexcept { return fKeepsRemainder; }

    /// Whether what it writes has names that ISO 8859-1 cannot hold, as far as its first traversal has shown: the file
    /// is one in UTF-8 then.
    [[nodiscard]] bool hasWideNames() const noexcept { return fHasWideNames; }

    /// Whether the writer is in its second traversal, the one that writes.
    [[nodiscard]] bool isSerializePhase() const noexcept { return fSerializePhase; }
    void setSerializePhase(bool serialize) noexcept { fSerializePhase = serialize; }

protected:
    void addTransform(Context const & pattern, RuleFunction rule);
    void addPreTransform(Context const & pattern, RuleFunction rule);
    void addPostTransform(Context const & pattern, RuleFunction rule);

    void setOnCreate(OnCreateFunction hook);
    void setResolveReference(ResolveReferenceFunction hook);
    void setPostTransform(PostTransformFunction hook);
    void setOnRead(OnReadFunction hook);
    void setTranslateNamespace(TranslateNamespaceFunction hook);
    void setOnNamespace(OnNamespaceFunction hook);
    void setKeepsRemainder(bool keep) noexcept { fKeepsRemainder = keep; }
    void setHasWideNames(bool has) noexcept { fHasWideNames = has; }

private:
    enum class Unmatched : bool { Keep, Drop };
    class Pass;

    static ContextSequence applyHelper(ContextSequence && sequence, RuleTable const & rules);
    static ContextSequence generate(ContextSequence const & sequence, RuleTable const & rules);

    bool fSerializePhase = false;
    RuleTable fTransforms;
    RuleTable fPreTransforms;
    RuleTable fPostTransforms;
    OnCreateFunction fOnCreate;
    ResolveReferenceFunction fResolveReference;
    PostTransformFunction fPostTransform;
    OnReadFunction fOnRead;
    TranslateNamespaceFunction fTranslateNamespace;
    OnNamespaceFunction fOnNamespace;
    bool fKeepsRemainder = false;
    bool fHasWideNames = false;
};

} // namespace ZEL::Serializer
