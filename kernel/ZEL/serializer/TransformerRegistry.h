#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/LinkedElement.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ZEL {
class ClassObject;
class Model;
} // namespace ZEL

namespace ZEL::Serializer {

class ReadFile;
class Transformer;
struct Reference;

/// The Transformers of a run, in order; each takes what the one before it returned.
///
/// Owns what it holds: a Transformer passed by raw pointer is deleted when it is removed or the registry is cleared.
/// Pass a shared pointer to keep it. One Transformer must not be passed by raw pointer to two registries. Rules and
/// hooks may add and remove Transformers: that counts from the next call on.
class ZEL_API TransformerRegistry {
public:
    /// Appends. A Transformer that is held already is not added again; a null pointer throws "An Internal Error has
    /// occurred".
    void addTransformer(Transformer * transformer);
    void addTransformer(std::shared_ptr<Transformer> transformer);
    /// Nothing if it is not held.
    void removeTransformer(Transformer const * transformer);
    void clear() noexcept {
        fTransformers.reset();
        ++fChanges;
    }
    [[nodiscard]] bool empty() const noexcept { return fTransformers == nullptr || fTransformers->empty(); }

    [[nodiscard]] ContextSequence apply(ContextSequence sequence) const;
    /// Whether `apply` would rewrite a Context with these names. The answer holds as long as `stateOfRules` is the same.
    [[nodiscard]] bool hasTransformFor(Context const & context) const;
    struct StateOfRules {
        void const * transformers = nullptr;
        std::uint64_t changes = 0;
        friend bool operator==(StateOfRules const &, StateOfRules const &) noexcept = default;
    };
    [[nodiscard]] StateOfRules stateOfRules() const noexcept;
    /// Whether any Transformer has a hook for links.
    [[nodiscard]] bool resolvesReferences() const noexcept;
    // These begin with the first Transformer that has rules for it: one without any keeps nothing from the others.
    [[nodiscard]] ContextSequence preApply(ContextSequence const & sequence) const;
    [[nodiscard]] ContextSequence postApply(ContextSequence const & sequence) const;

    /// Whether a Context with this role may be one that a rule fits.
    [[nodiscard]] bool mayFit(QualifiedName role) const noexcept;

    void onCreate(Context const & context, ClassObject const & object) const;
    /// The valid answers of all Transformers, in order.
    [[nodiscard]] std::vector<LinkedElement> resolveReference(std::string const & uri,
                                                              Reference const & reference) const;
    void postTransform(Model const & model) const;
    void onRead(ReadFile & file) const;
    /// By all Transformers in order, each taking what the one before it returned.
    [[nodiscard]] std::string translateNamespace(std::string uri) const;
    [[nodiscard]] bool translatesNamespaces() const noexcept;
    void onNamespace(std::string const & prefix, std::string const & uri) const;
    /// Whether any Transformer wants it.
    [[nodiscard]] bool keepsRemainder() const noexcept;
    /// Whether any Transformer has them.
    [[nodiscard]] bool hasWideNames() const noexcept;
    void setSerializePhase(bool serialize) const;

private:
    using Transformers = std::vector<std::shared_ptr<Transformer>>;
    using Pass = ContextSequence (Transformer::*)(ContextSequence const &);
    using HasRules = bool (Transformer::*)() const noexcept;

    /// The Transformers as they are now. They stay so, and alive, as long as the pointer is kept. Never null.
    [[nodiscard]] std::shared_ptr<Transformers const> present() const noexcept;
    [[nodiscard]] bool has(Transformer const * transformer) const noexcept;
    template <class Function> void forEach(Function function) const;
    [[nodiscard]] ContextSequence generate(ContextSequence const & sequence, Pass pass, HasRules hasRules) const;

    std::shared_ptr<Transformers const> fTransformers; ///< null for none
    std::uint64_t fChanges = 0;                        ///< of `fTransformers`
};

} // namespace ZEL::Serializer
