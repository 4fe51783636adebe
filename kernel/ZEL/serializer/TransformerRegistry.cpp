#include <ZEL/Exception.h>
#include <ZEL/serializer/Transformer.h>
#include <ZEL/serializer/TransformerRegistry.h>

#include <algorithm>
#include <utility>

namespace ZEL::Serializer {

bool TransformerRegistry::holds(Transformer const * transformer) const noexcept {
    return std::any_of(fTransformers.begin(), fTransformers.end(),
                       [=](auto const & held) { return held.get() == transformer; });
}

void TransformerRegistry::addTransformer(Transformer * transformer) {
    // Asked before the pointer gets an owner: a second owner would delete it a second time.
    if (!holds(transformer)) {
        addTransformer(std::shared_ptr<Transformer>(transformer));
    }
}

void TransformerRegistry::addTransformer(std::shared_ptr<Transformer> transformer) {
    if (transformer == nullptr) {
        raiseAnInternalError();
    }
    if (!holds(transformer.get())) {
        fTransformers.push_back(std::move(transformer));
    }
}

void TransformerRegistry::removeTransformer(Transformer const * transformer) {
    std::erase_if(fTransformers, [=](auto const & held) { return held.get() == transformer; });
}

ContextSequence TransformerRegistry::apply(ContextSequence sequence) const {
    for (auto const & transformer : fTransformers) {
        sequence = transformer->apply(std::move(sequence));
    }
    return sequence;
}

ContextSequence TransformerRegistry::preApply(ContextSequence const & sequence) const {
    if (fTransformers.empty()) {
        return sequence;
    }
    ContextSequence result = fTransformers.front()->preApply(sequence);
    for (std::size_t i = 1; i < fTransformers.size(); ++i) {
        result = fTransformers[i]->preApply(result);
    }
    return result;
}

ContextSequence TransformerRegistry::postApply(ContextSequence const & sequence) const {
    if (fTransformers.empty()) {
        return sequence;
    }
    ContextSequence result = fTransformers.front()->postApply(sequence);
    for (std::size_t i = 1; i < fTransformers.size(); ++i) {
        result = fTransformers[i]->postApply(result);
    }
    return result;
}

void TransformerRegistry::onCreate(Context const & context, ClassObject const & object) const {
    for (auto const & transformer : fTransformers) {
        transformer->onCreate(context, object);
    }
}

std::vector<LinkedElement> TransformerRegistry::resolveReference(std::string const & uri,
                                                                 Reference const & reference) const {
    std::vector<LinkedElement> links;
    for (auto const & transformer : fTransformers) {
        LinkedElement link = transformer->resolveReference(uri, reference);
        if (link.isValid()) {
            links.push_back(std::move(link));
        }
    }
    return links;
}

void TransformerRegistry::postTransform(Model const & model) const {
    for (auto const & transformer : fTransformers) {
        transformer->postTransform(model);
    }
}

void TransformerRegistry::setSerializePhase(bool serialize) const {
    for (auto const & transformer : fTransformers) {
        transformer->setSerializePhase(serialize);
    }
}

} // namespace ZEL::Serializer
