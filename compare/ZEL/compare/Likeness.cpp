#include <ZEL/compare/Likeness.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

namespace ZEL::Compare {
namespace {

std::uint64_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

std::uint64_t hashOf(void const * address) { return reinterpret_cast<std::uintptr_t>(address); }

std::uint64_t hashOf(FieldValue const & value) {
    switch (value.form()) {
    case FieldValue::Form::Text:
        return hashOf(value.text());
    case FieldValue::Form::Flag:
        return value.flag() ? 1 : 0;
    case FieldValue::Form::Double:
        return std::hash<double>()(value.asDouble());
    case FieldValue::Form::Single:
        return std::hash<float>()(value.asSingle());
    default:
        return value.number();
    }
}

} // namespace

std::uint64_t nameHashOf(Tree const & tree, Tree::Index index) {
    return combined(hashOf(tree[index].metaClass), hashOf(tree.nameOf(index)));
}

std::uint64_t Likeness::targetOf(Side const & side, ObjectIntf const * target) const {
    Index const index = side.tree.indexOf(target);
    if (index == Tree::kNone) {
        return hashOf(target);
    }
    bool const isLeft = &side == &fPairs.left();
    if (Index const counterpart = side.counterparts[index]; counterpart != Tree::kNone) {
        return combined(1, isLeft ? index : counterpart);
    }
    return nameHashOf(side.tree, index);
}

/// What the object says itself, without its parts.
void Likeness::appendOwn(Side const & side, Index index, Features & features) const {
    Tree::Node const & node = side.tree[index];
    internal::StateCore const & state = side.tree.stateOf(index);
    for (PropertyView const * const property : node.metaClass->values) {
        if (property->value == nullptr) {
            ImmutableClassObject(node.body, node.deviant())
                .get(property->property)
                .forEach([&](ImmutableObject const & value) {
                    ImmutableValueObject const text(value);
                    features.push_back(
                        combined(hashOf(property), text.isValid() ? hashOf(std::string(text.toString())) : 0));
                });
        } else if (FieldValue const value = property->value->get(state); value.isSet()) {
            features.push_back(combined(hashOf(property), hashOf(value)));
        }
    }
    for (PropertyView const * const property : node.metaClass->links) {
        forEachTarget(*property, *node.body, node.deviant(), [&](ObjectIntf const * target) {
            features.push_back(combined(hashOf(property), targetOf(side, target)));
        });
    }
}

Likeness::Features const & Likeness::featuresOf(Side const & side, Known & known, Index index) {
    auto const [found, isNew] = known.features.try_emplace(index);
    Features & features = found->second;
    if (isNew) {
        appendOwn(side, index, features);
        side.tree.forEachChild(index, [&](Index child) {
            features.push_back(combined(hashOf(side.tree[child].property), nameHashOf(side.tree, child)));
        });
        std::sort(features.begin(), features.end());
    }
    return features;
}

std::uint64_t Likeness::contentOf(Side const & side, Known & known, Index index) {
    if (auto const found = known.content.find(index); found != known.content.end()) {
        return found->second;
    }
    // From the last object to the first, so that what is contained comes before what contains it.
    Features features;
    for (Index at = side.tree[index].end; at-- > index;) {
        if (known.content.count(at) != 0) {
            continue;
        }
        features.clear();
        appendOwn(side, at, features);
        std::uint64_t content = hashOf(side.tree[at].metaClass);
        for (std::uint64_t const feature : features) {
            content = combined(content, feature);
        }
        side.tree.forEachChild(at, [&](Index child) {
            content = combined(content, combined(hashOf(side.tree[child].property), known.content.at(child)));
        });
        known.content.emplace(at, content);
    }
    return known.content.at(index);
}

double Likeness::between(Index left, Index right) {
    Features const & a = ofLeft(left);
    Features const & b = ofRight(right);
    if (a.empty() && b.empty()) {
        return 1;
    }
    std::size_t common = 0;
    for (auto i = a.begin(), j = b.begin(); i != a.end() && j != b.end();) {
        if (*i == *j) {
            ++common;
            ++i;
            ++j;
        } else if (*i < *j) {
            ++i;
        } else {
            ++j;
        }
    }
    return 2.0 * static_cast<double>(common) / static_cast<double>(a.size() + b.size());
}

} // namespace ZEL::Compare
