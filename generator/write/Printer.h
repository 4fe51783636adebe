#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelgen {

/// Fills texts that look like the file they make.
///
/// `$name$` in a text stands for a value. A value of several lines takes the indentation of its place. A line that
/// holds nothing but a name whose value is empty goes away. A name without a value, and a value given with a text that has
/// no place for it, are mistakes of an emitter and throw `std::logic_error`.
///
/// Texts name everything from outside, as `ZEL::String`; the printer drops the namespaces in which the file declares.
class Printer {
public:
    using Values = std::initializer_list<std::pair<std::string_view, std::string>>;

    explicit Printer(std::string const & cppNamespace);

    /// One that knows the same values, for a file that declares in another namespace.
    [[nodiscard]] Printer within(std::string const & cppNamespace) const;
    /// One that also knows these values, for any text that has a place for them. A value given with a text goes before a
    /// known one of the same name.
    [[nodiscard]] Printer knowing(Values const & values) const;

    /// The filled text, without a line end before its first line.
    [[nodiscard]] std::string operator()(std::string_view text, Values const & values = {}) const;

    /// `blocks` one after the other, with a blank line between them; empty ones are left out.
    [[nodiscard]] static std::string blocks(std::vector<std::string> const & blocks);
    [[nodiscard]] static std::string join(std::vector<std::string> const & items, std::string_view separator);
    /// `text` as lines of a comment that start with `mark`, none longer than a line of code at `indent`.
    [[nodiscard]] static std::string comment(std::string_view mark, std::string_view text, std::size_t indent = 0);
    /// `text` as a string literal.
    [[nodiscard]] static std::string quoted(std::string_view text);

private:
    [[nodiscard]] std::string shortened(std::string text) const;

    std::vector<std::string> fQualifiers; ///< "ZEL::NSInterface::", "ZEL::"
    std::map<std::string, std::string, std::less<>> fKnown;
};

} // namespace zelgen
