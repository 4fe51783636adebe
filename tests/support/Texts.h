#pragma once

#include <string>
#include <string_view>

namespace ZEL::tests {

/// What every page of the library begins with, up to its title.
inline constexpr char kPageStart[] = R"html(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE html
PUBLIC "-//W3C//DTD XHTML 1.0 Transitional//EN" "http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd">
<html xmlns="http://www.w3.org/1999/xhtml">
<head>
<title>)html";

/// The part of a page from the first `begin` up to the `end` after it; empty if there is none.
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

} // namespace ZEL::tests
