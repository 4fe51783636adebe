#pragma once

#include "host/TemporaryFolder.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What several fuzz targets share.
namespace fuzz {

/// A small model with classes, properties, both ends of an association and a comment.
inline constexpr std::string_view kModel = R"(<?xml version="1.0" encoding="utf-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:ZEL="http://schema.omg.org/spec/MOF/2.0">
  <ZEL:MetaModel xmi:id="_zel_u" name="present">
    <topPackage xmi:id="_zel_u_2" xmi:type="ZEL:Package" name="top">
      <packagedElement xmi:id="_zel_u_3" xmi:type="ZEL:Class" name="A">
        <ownedAttribute xmi:id="_zel_u_4" xmi:type="ZEL:Property" name="b" type="_zel_u_5" association="_zel_u_6"/>
        <ownedComment xmi:id="_zel_u_8" xmi:type="ZEL:Comment" body="text" annotatedElement="_zel_u_3 _zel_u_4"/>
      </packagedElement>
      <packagedElement xmi:id="_zel_u_5" xmi:type="ZEL:Class" name="B" isAbstract="true" superClass="_zel_u_3">
        <ownedAttribute xmi:id="_zel_u_7" xmi:type="ZEL:Property" name="a" lower="0" type="_zel_u_3" association="_zel_u_6"/>
        <ownedOperation xmi:id="_zel_u_9" xmi:type="ZEL:Operation" name="o" type="_zel_u_3">
          <ownedParameter xmi:id="_zel_u_10" xmi:type="ZEL:Parameter" name="p" type="_zel_u_5"/>
        </ownedOperation>
        <ownedRule xmi:id="_zel_u_11" xmi:type="ZEL:Constraint" constrainedElement="_zel_u_5">
          <specification xmi:id="_zel_u_12" xmi:type="ZEL:OpaqueExpression" body="x" language="y"/>
        </ownedRule>
      </packagedElement>
      <packagedElement xmi:id="_zel_u_6" xmi:type="ZEL:Association" memberEnd="_zel_u_4 _zel_u_7"/>
    </topPackage>
  </ZEL:MetaModel>
</xmi:XMI>
)";

inline void require(bool holds, std::string const & claim) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", claim.c_str());
        std::abort();
    }
}

/// Whether the function returns without throwing a `std::exception`.
template <class Function> bool succeeds(Function function) {
    try {
        function();
        return true;
    } catch (std::exception const &) {
        return false;
    }
}

/// The document with changes that `bytes` determine, four bytes for each: a value or line is copied from one place to
/// another, or a value is replaced or removed. Most changes keep it well-formed, so that they test more than the
/// parser.
inline std::string mutated(std::string_view document, std::span<std::uint8_t const> bytes) {
    std::string text(document);
    auto const valuesOf = [&text] {
        std::vector<std::pair<std::size_t, std::size_t>> values;
        for (std::size_t at = text.find("=\""); at != std::string::npos; at = text.find("=\"", at)) {
            std::size_t const end = text.find('"', at + 2);
            if (end == std::string::npos) {
                break;
            }
            values.emplace_back(at + 2, end - at - 2);
            at = end;
        }
        return values;
    };
    for (; bytes.size() >= 4; bytes = bytes.subspan(4)) {
        std::size_t const from = bytes[1];
        std::size_t const to = bytes[2];
        auto const values = valuesOf();
        if (values.empty() || text.size() > 100'000) {
            break;
        }
        auto const [fromBegin, fromSize] = values[from % values.size()];
        auto const [toBegin, toSize] = values[to % values.size()];
        std::string const value = text.substr(fromBegin, fromSize);
        switch (bytes[0] % 5) {
        case 0: // a value in the place of another
            text.replace(toBegin, toSize, value);
            break;
        case 1: // one value more
            text.insert(toBegin, value + ' ');
            break;
        case 2: { // a line once more, or two of them if it opens an element
            std::size_t const begin = text.rfind('\n', fromBegin) + 1;
            std::string const line = text.substr(begin, text.find('\n', begin) + 1 - begin);
            text.insert(text.rfind('\n', toBegin) + 1, line);
            break;
        }
        case 3: // any character in a value
            text.replace(toBegin, toSize, std::string(bytes[3] % 8, static_cast<char>(bytes[3])));
            break;
        case 4: { // an attribute goes
            std::size_t const begin = text.rfind(' ', toBegin);
            text.erase(begin, toBegin + toSize + 1 - begin);
            break;
        }
        }
    }
    return text;
}

} // namespace fuzz
