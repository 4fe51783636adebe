#include <ZEL/sequences/SequenceNames.h>

#include <map>

namespace ZEL::Generic {

namespace {
constexpr std::string_view kImmutable = "Immutable";
}

SequenceNames::SequenceNames(std::string_view typeName, bool isOfValues) {
    auto const dot = typeName.rfind('.');
    std::size_t const prefixSize = dot == std::string_view::npos ? 0 : dot + 1;
    std::string const prefix(typeName.substr(0, prefixSize));
    std::string_view name = typeName.substr(prefixSize);
    if (!isOfValues && name.starts_with(kImmutable)) {
        name.remove_prefix(kImmutable.size());
    }
    for (bool const immutableSequence : {true, false}) {
        for (bool const immutableElement : {true, false}) {
            std::string & text = fNames[(immutableSequence ? 0u : 2u) + (immutableElement ? 0u : 1u)];
            text = prefix;
            text += immutableSequence ? "ImmutableSequenceOf" : "SequenceOf";
            if (immutableElement && !isOfValues) {
                text += kImmutable;
            }
            text += name;
        }
    }
}

SequenceNames const & SequenceNames::of(std::string const & typeName, bool isOfValues) {
    // Never freed: a name may be asked for while the process ends.
    static auto & names = *new std::map<std::string, SequenceNames, std::less<>>;
    return names.try_emplace(typeName, typeName, isOfValues).first->second;
}

} // namespace ZEL::Generic
