#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/LinkedElement.h>
#include <ZEL/serializer/Reference.h>
#include <ZEL/serializer/Transformer.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

Transformer::Transformer() = default;
Transformer::Transformer(Transformer const & other) = default;
Transformer & Transformer::operator=(Transformer const & other) = default;
Transformer::~Transformer() = default;

/// The result of a pass as it grows, and what has been seen on the way.
class Transformer::Pass {
public:
    explicit Pass(Unmatched unmatched) noexcept : fUnmatched(unmatched) {}

    void reserve(std::size_t count) { fResult.reserve(count); }

    /// A Context that no rule fits and that stays.
    void keep(Context && context) {
        if (findSeen(context) == fSeen.end()) {
            fSeen.push_back(namesOf(context));
        }
        fResult.push_back(std::move(context));
    }

    /// A Context that a rule gave.
    void emit(Context && context) {
        auto const seen = findSeen(context);
        if (seen == fSeen.end()) {
            fSeen.push_back(namesOf(context));
            fResult.push_back(std::move(context));
        } else if (seen->skipContext()) {
            return;
        } else if (fUnmatched == Unmatched::Drop) {
            fResult.push_back(std::move(context));
        } else {
            replace(seen, context);
        }
    }

    ContextSequence take() {
        ContextSequence sequence;
        sequence.reserve(fResult.size());
        for (Context & context : fResult) {
            sequence.addContext(std::move(context));
        }
        return sequence;
    }

private:
    /// A Context with the names and the skip state alone, which are all that the search needs.
    static Context namesOf(Context const & context) {
        Context names;
        names.setParentType(context.getParentType());
        names.setParentRole(context.getParentRole());
        names.setType(context.getType());
        names.setRole(context.getRole());
        names.setSkipState(context.skipContext());
        return names;
    }

    // Equality of Contexts is not transitive, so no ordered or hashed container would give the same answer for every
    // order of entry. A sequence has some tens of entries.
    std::vector<Context>::iterator findSeen(Context const & context) {
        return std::find(fSeen.begin(), fSeen.end(), context);
    }

    void replace(std::vector<Context>::iterator seen, Context const & context) {
        std::replace(fResult.begin(), fResult.end(), Context(*seen), context);
        fSeen.erase(seen);
        fSeen.push_back(namesOf(context));
    }

    Unmatched fUnmatched;
    std::vector<Context> fResult;
    std::vector<Context> fSeen;
};

ContextSequence Transformer::apply(ContextSequence sequence) { return applyHelper(std::move(sequence), fTransforms); }

ContextSequence Transformer::preApply(ContextSequence const & sequence) { return generate(sequence, fPreTransforms); }

ContextSequence Transformer::postApply(ContextSequence const & sequence) { return generate(sequence, fPostTransforms); }

ContextSequence Transformer::applyHelper(ContextSequence && sequence, RuleTable const & rules) {
    auto const matched = std::find_if(sequence.begin(), sequence.end(),
                                      [&](Context const & context) { return rules.find(context) != nullptr; });
    if (matched == sequence.end()) {
        sequence.recountElements();
        return std::move(sequence);
    }
    Pass pass(Unmatched::Keep);
    pass.reserve(sequence.size() + 1);
    std::for_each(sequence.begin(), matched, [&](Context & context) { pass.keep(std::move(context)); });
    for (auto context = matched; context != sequence.end(); ++context) {
        RuleFunction const * const found = rules.find(*context);
        if (found == nullptr) {
            pass.keep(std::move(*context));
            continue;
        }
        // A rule may change the table it stands in: what runs is a copy.
        RuleFunction const function = *found;
        for (Context & given : ContextSequence(function(*context))) {
            pass.emit(std::move(given));
        }
    }
    return pass.take();
}

ContextSequence Transformer::generate(ContextSequence const & sequence, RuleTable const & rules) {
    Pass pass(Unmatched::Drop);
    if (!rules.empty()) {
        for (Context const & context : sequence) {
            if (RuleFunction const * const found = rules.find(context); found != nullptr) {
                RuleFunction const function = *found;
                for (Context & given : ContextSequence(function(context))) {
                    pass.emit(std::move(given));
                }
            }
        }
    }
    return pass.take();
}

void Transformer::onCreate(Context const & context, ClassObject const & object) {
    if (!fOnCreate.empty()) {
        fOnCreate(context, object);
    }
}

LinkedElement Transformer::resolveReference(std::string const & uri, Reference const & reference) {
    return fResolveReference.empty() ? LinkedElement() : fResolveReference(uri, reference);
}

void Transformer::postTransform(Model const & model) {
    if (!fPostTransform.empty()) {
        fPostTransform(model);
    }
}

void Transformer::addTransform(Context const & pattern, RuleFunction function) {
    fTransforms.add(pattern, std::move(function));
}

void Transformer::addPreTransform(Context const & pattern, RuleFunction function) {
    fPreTransforms.add(pattern, std::move(function));
}

void Transformer::addPostTransform(Context const & pattern, RuleFunction function) {
    fPostTransforms.add(pattern, std::move(function));
}

void Transformer::setOnCreate(OnCreateFunction hook) { fOnCreate = std::move(hook); }

void Transformer::setResolveReference(ResolveReferenceFunction hook) { fResolveReference = std::move(hook); }

void Transformer::setPostTransform(PostTransformFunction hook) { fPostTransform = std::move(hook); }

} // namespace ZEL::Serializer
