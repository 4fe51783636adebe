#pragma once

#include <string>
#include <string_view>

namespace ZEL::testsupport {

/// The part of a page from the first `begin` up to the `end` behind it; empty if there is none.
inline std::string between(std::string const & page, std::string_view begin, std::string_view end) {
    std::size_t const from = page.find(begin);
    std::size_t const to = from == std::string::npos ? from : page.find(end, from);
    return to == std::string::npos ? std::string() : page.substr(from, to - from);
}

inline std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// What a parser of XML makes an error of, put right: the check boxes, which HTML leaves open, and the document type,
/// which stands elsewhere; two of its entities are given here.
inline std::string asXml(std::string const & page) {
    std::string const doctype = between(page, "<!DOCTYPE", "\n<html");
    std::string const entities = "<!DOCTYPE html [<!ENTITY laquo '&#171;'><!ENTITY raquo '&#187;'>]>";
    std::string text = replaced(page, doctype, entities);
    for (char const * const box : {"7", "6", "5"}) {
        std::string const end = std::string("toggleCssDisplayNum(") + box + ");\"";
        text = replaced(text, end + ">", end + "/>");
    }
    return text;
}

} // namespace ZEL::testsupport
