#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/reader/ElementText.h>
#include <ZEL/serializer/reader/LinkedFiles.h>
#include <ZEL/serializer/reader/Remainders.h>

#include <algorithm>
#include <string>
#include <utility>

namespace ZEL::Serializer {

Remainder & Remainders::of(ClassObject const & object) {
    auto const [entry, isNew] = fPlaces.try_emplace(object.getImplementation(), fKept.size());
    if (isNew) {
        fKept.push_back({object, {}});
    }
    return fKept[entry->second].remainder;
}

void Remainders::keepText(ClassObject const & object, std::string_view property, std::string_view text,
                          bool isFurther) {
    Remainder & remainder = of(object);
    constexpr std::size_t many = 256; // of which no search would end soon
    bool const isTaken = remainder.attributes.size() >= many ||
                         std::any_of(remainder.attributes.begin(), remainder.attributes.end(),
                                     [&](auto const & other) { return other.uri.empty() && other.name == property; });
    if (isFurther || isTaken) {
        remainder.elements.push_back({ElementText::of(property, text)});
    } else {
        remainder.attributes.push_back({{}, {}, std::string(property), std::string(text)});
    }
}

void Remainders::noteNamespace(std::string const & prefix, std::string const & uri) {
    if (!prefix.empty()) {
        fPrefixes.try_emplace(uri, prefix);
    }
}

void Remainders::settle(LinkedFiles const & files) {
    for (Kept & kept : fKept) {
        if (kept.object.isValid()) {
            for (Remainder::Link & link : kept.remainder.links) {
                link.target = files.nameOf(link.target);
                auto const prefix = fPrefixes.find(link.typeUri);
                if (prefix != fPrefixes.end() &&
                    NamespaceRegistry::instance()->getPrefixFromMetaUri(link.typeUri).empty()) {
                    link.typePrefix = prefix->second;
                }
            }
            setRemainder(kept.object, std::move(kept.remainder));
        }
    }
    clear();
}

void Remainders::clear() noexcept {
    fPlaces.clear();
    fPrefixes.clear();
    fKept.clear();
}

} // namespace ZEL::Serializer
