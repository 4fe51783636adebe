#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/LinkedElement.h>
#include <ZEL/serializer/Reference.h>
#include <ZEL/serializer/Transformer.h>

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL::Serializer {

Transformer::~Transformer() = default;

void Transformer::setOnCreate(OnCreateFunction hook) { fOnCreate = std::move(hook); }

void Transformer::setResolveReference(ResolveReferenceFunction hook) { fResolveReference = std::move(hook); }

void Transformer::setPostTransform(PostTransformFunction hook) { fPostTransform = std::move(hook); }

void Transformer::setOnRead(OnReadFunction hook) { fOnRead = std::move(hook); }

void Transformer::setTranslateNamespace(TranslateNamespaceFunction hook) { fTranslateNamespace = std::move(hook); }

void Transformer::setOnNamespace(OnNamespaceFunction hook) { fOnNamespace = std::move(hook); }

void Transformer::addTransform(Context const & pattern, RuleFunction rule) {
    fTransforms.add(pattern, std::move(rule));
}

void Transformer::addPreTransform(Context const & pattern, RuleFunction rule) {
    fPreTransforms.add(pattern, std::move(rule));
}

void Transformer::addPostTransform(Context const & pattern, RuleFunction rule) {
    fPostTransforms.add(pattern, std::move(rule));
}

/// The result of a pass as it grows, and what has been seen on the way.
class Transformer::Pass {
public:
    explicit Pass(Unmatched unmatched) noexcept : fUnmatched(unmatched) {}

    void reserve(std::size_t count) { fResult.reserve(count); }

    /// A Context that no rule fits and that stays.
    void keep(Context && context) {
        if (seenLike(context) == nullptr) {
            see(context);
        }
        put(std::move(context));
    }

    /// A Context that a rule returned.
    void emit(Context && context) {
        Context const * const seen = seenLike(context);
        if (seen == nullptr) {
            see(context);
            put(std::move(context));
        } else if (seen->skipContext()) {
            return;
        } else if (fUnmatched == Unmatched::Drop) {
            put(std::move(context));
        } else {
            replace(*seen, context);
        }
    }

    /// What the rule returns for the Context. It may change the table it stands in: what runs is a copy.
    void run(RuleFunction const rule, Context const & context) {
        ContextSequence returned = rule(context);
        for (Context & one : returned) {
            emit(std::move(one));
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
    /// What has one role, in order of entry. Equality of Contexts is not transitive, so no ordered or hashed container
    /// would find the same one for every order of entry; but Contexts of two roles are never equal.
    struct Places {
        std::vector<std::size_t> seen;
        std::vector<std::size_t> result;
    };

    /// A sequence has some tens of entries, which are looked through faster than indexed.
    static constexpr std::size_t kFew = 64;

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

    /// Null if there is none.
    [[nodiscard]] Context const * seenLike(Context const & context) const {
        if (!fIsIndexed) {
            auto const found = std::find(fSeen.begin(), fSeen.end(), context);
            return found == fSeen.end() ? nullptr : &*found;
        }
        if (auto const places = fPlaces.find(context.getRole()); places != fPlaces.end()) {
            for (std::size_t const place : places->second.seen) {
                if (fSeen[place] == context) {
                    return &fSeen[place];
                }
            }
        }
        return nullptr;
    }

    void see(Context const & context) {
        fSeen.push_back(namesOf(context));
        if (fIsIndexed) {
            fPlaces[context.getRole()].seen.push_back(fSeen.size() - 1);
        }
    }

    void put(Context && context) {
        fResult.push_back(std::move(context));
        if (fIsIndexed) {
            fPlaces[fResult.back().getRole()].result.push_back(fResult.size() - 1);
        } else if (fResult.size() > kFew) {
            makeIndex();
        }
    }

    void makeIndex() {
        fIsIndexed = true;
        for (std::size_t place = 0; place < fSeen.size(); ++place) {
            fPlaces[fSeen[place].getRole()].seen.push_back(place);
        }
        for (std::size_t place = 0; place < fResult.size(); ++place) {
            fPlaces[fResult[place].getRole()].result.push_back(place);
        }
    }

    /// `seen` becomes the last of those that have been seen.
    void replace(Context const & seen, Context const & context) {
        Context const old = seen;
        auto const place = static_cast<std::size_t>(&seen - fSeen.data());
        if (!fIsIndexed) {
            std::replace(fResult.begin(), fResult.end(), old, context);
            fSeen.erase(fSeen.begin() + static_cast<std::ptrdiff_t>(place));
            fSeen.push_back(namesOf(context));
            return;
        }
        Places & places = fPlaces[old.getRole()];
        for (std::size_t const index : places.result) {
            if (fResult[index] == old) {
                fResult[index] = context;
            }
        }
        // Its place in the vector says nothing once there is an index.
        fSeen[place] = namesOf(context);
        std::erase(places.seen, place);
        places.seen.push_back(place);
    }

    Unmatched fUnmatched;
    bool fIsIndexed = false;
    std::vector<Context> fResult;
    std::vector<Context> fSeen;
    std::unordered_map<QualifiedName, Places> fPlaces; ///< of many only
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
        if (RuleFunction const * const rule = rules.find(*context)) {
            pass.run(*rule, *context);
        } else {
            pass.keep(std::move(*context));
        }
    }
    return pass.take();
}

ContextSequence Transformer::generate(ContextSequence const & sequence, RuleTable const & rules) {
    Pass pass(Unmatched::Drop);
    for (Context const & context : sequence) {
        if (RuleFunction const * const rule = rules.find(context)) {
            pass.run(*rule, context);
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

std::string Transformer::translateNamespace(std::string const & uri) const {
    return fTranslateNamespace ? fTranslateNamespace(uri) : uri;
}

void Transformer::onNamespace(std::string const & prefix, std::string const & uri) {
    if (!fOnNamespace.empty()) {
        fOnNamespace(prefix, uri);
    }
}

void Transformer::postTransform(Model const & model) {
    if (!fPostTransform.empty()) {
        fPostTransform(model);
    }
}

void Transformer::onRead(ReadFile & file) {
    if (!fOnRead.empty()) {
        fOnRead(file);
    }
}

} // namespace ZEL::Serializer
