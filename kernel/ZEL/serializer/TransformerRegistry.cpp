#include <ZEL/base/Exception.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/TransformerRegistry.h>

#include <algorithm>
#include <utility>

namespace ZEL::Serializer {
namespace {

auto holds(Transformer const * transformer) {
    return [=](std::shared_ptr<Transformer> const & held) { return held.get() == transformer; };
}

} // namespace

std::shared_ptr<TransformerRegistry::Transformers const> TransformerRegistry::present() const noexcept {
    static Transformers const none;
    // Without an owner: nothing to count.
    return fTransformers != nullptr ? fTransformers
                                    : std::shared_ptr<Transformers const>(std::shared_ptr<void>(), &none);
}

template <class Function> void TransformerRegistry::forEach(Function function) const {
    auto const transformers = present();
    for (auto const & transformer : *transformers) {
        function(*transformer);
    }
}

bool TransformerRegistry::has(Transformer const * transformer) const noexcept {
    auto const transformers = present();
    return std::any_of(transformers->begin(), transformers->end(), holds(transformer));
}

void TransformerRegistry::addTransformer(Transformer * transformer) {
    // Asked before the pointer gets an owner: a second owner would delete it a second time.
    if (!has(transformer)) {
        addTransformer(std::shared_ptr<Transformer>(transformer));
    }
}

void TransformerRegistry::addTransformer(std::shared_ptr<Transformer> transformer) {
    if (transformer == nullptr) {
        raiseAnInternalError();
    }
    if (!has(transformer.get())) {
        auto changed = std::make_shared<Transformers>(*present());
        changed->push_back(std::move(transformer));
        fTransformers = std::move(changed);
        ++fChanges;
    }
}

void TransformerRegistry::removeTransformer(Transformer const * transformer) {
    auto changed = std::make_shared<Transformers>(*present());
    std::erase_if(*changed, holds(transformer));
    fTransformers = std::move(changed);
    ++fChanges;
}

ContextSequence TransformerRegistry::apply(ContextSequence sequence) const {
    forEach([&](Transformer & transformer) { sequence = transformer.apply(std::move(sequence)); });
    return sequence;
}

bool TransformerRegistry::hasTransformFor(Context const & context) const {
    return fTransformers != nullptr &&
           std::any_of(fTransformers->begin(), fTransformers->end(),
                       [&](auto const & transformer) { return transformer->hasTransformFor(context); });
}

TransformerRegistry::StateOfRules TransformerRegistry::stateOfRules() const noexcept {
    return {fTransformers.get(), RuleTable::changeCount() + fChanges};
}

bool TransformerRegistry::resolvesReferences() const noexcept {
    return fTransformers != nullptr &&
           std::any_of(fTransformers->begin(), fTransformers->end(),
                       [](auto const & transformer) { return transformer->resolvesReferences(); });
}

ContextSequence TransformerRegistry::preApply(ContextSequence const & sequence) const {
    return generate(sequence, &Transformer::preApply, &Transformer::hasPreTransforms);
}

ContextSequence TransformerRegistry::postApply(ContextSequence const & sequence) const {
    return generate(sequence, &Transformer::postApply, &Transformer::hasPostTransforms);
}

ContextSequence TransformerRegistry::generate(ContextSequence const & sequence, Pass pass, HasRules hasRules) const {
    auto const transformers = present();
    if (transformers->empty()) {
        return sequence;
    }
    auto at = std::find_if(transformers->begin(), transformers->end(),
                           [&](auto const & transformer) { return (*transformer.*hasRules)(); });
    if (at == transformers->end()) {
        return {};
    }
    ContextSequence result = (**at.*pass)(sequence);
    while (++at != transformers->end()) {
        result = (**at.*pass)(result);
    }
    return result;
}

bool TransformerRegistry::mayFit(QualifiedName role) const noexcept {
    auto const transformers = present();
    return std::any_of(transformers->begin(), transformers->end(),
                       [role](auto const & transformer) { return transformer->mayFit(role); });
}

void TransformerRegistry::onCreate(Context const & context, ClassObject const & object) const {
    forEach([&](Transformer & transformer) { transformer.onCreate(context, object); });
}

std::vector<LinkedElement> TransformerRegistry::resolveReference(std::string const & uri,
                                                                 Reference const & reference) const {
    std::vector<LinkedElement> links;
    forEach([&](Transformer & transformer) {
        LinkedElement link = transformer.resolveReference(uri, reference);
        if (link.isValid()) {
            links.push_back(std::move(link));
        }
    });
    return links;
}

void TransformerRegistry::postTransform(Model const & model) const {
    forEach([&](Transformer & transformer) { transformer.postTransform(model); });
}

void TransformerRegistry::onRead(ReadFile & file) const {
    forEach([&](Transformer & transformer) { transformer.onRead(file); });
}

std::string TransformerRegistry::translateNamespace(std::string uri) const {
    forEach([&](Transformer const & transformer) { uri = transformer.translateNamespace(uri); });
    return uri;
}

void TransformerRegistry::onNamespace(std::string const & prefix, std::string const & uri) const {
    forEach([&](Transformer & transformer) { transformer.onNamespace(prefix, uri); });
}

bool TransformerRegistry::translatesNamespaces() const noexcept {
    return fTransformers != nullptr &&
           std::any_of(fTransformers->begin(), fTransformers->end(),
                       [](auto const & transformer) { return transformer->translatesNamespaces(); });
}

bool TransformerRegistry::keepsRemainder() const noexcept {
    return fTransformers != nullptr &&
           std::any_of(fTransformers->begin(), fTransformers->end(),
                       [](auto const & transformer) { return transformer->keepsRemainder(); });
}

bool TransformerRegistry::hasWideNames() const noexcept {
    return fTransformers != nullptr &&
           std::any_of(fTransformers->begin(), fTransformers->end(),
                       [](auto const & transformer) { return transformer->hasWideNames(); });
}

void TransformerRegistry::setSerializePhase(bool serialize) const {
    forEach([=](Transformer & transformer) { transformer.setSerializePhase(serialize); });
}

} // namespace ZEL::Serializer
