#include <ZEL/compare/SameRemainder.h>

#include <algorithm>
#include <tuple>

namespace ZEL::Compare {
namespace {

auto keyOf(Remainder::Attribute const & each) { return std::tie(each.uri, each.name, each.value, each.place); }

auto keyOf(Remainder::Link const & each) {
    return std::tie(each.property, each.target, each.typeUri, each.typeName, each.content);
}

auto keyOf(Remainder::Element const & each) { return std::tie(each.xml, each.place, each.property, each.target); }

template <class Entries> bool areEqual(Entries const & a, Entries const & b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](auto const & x, auto const & y) { return keyOf(x) == keyOf(y); });
}

} // namespace

bool saySame(Remainder const & a, Remainder const & b) {
    return areEqual(a.attributes, b.attributes) && areEqual(a.links, b.links) && areEqual(a.elements, b.elements) &&
           a.typeUri == b.typeUri && a.typeName == b.typeName;
}

} // namespace ZEL::Compare
