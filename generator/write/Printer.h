#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelgen {

/// Fills templates that look like the file they produce.
///
/// `$name$` in a text is replaced by a value. A value of several lines is indented like its place. A line that consists
/// of a name whose value is empty is dropped. A name without a value, and a value that is passed with a text that does
/// not use it, are mistakes of an emitter and throw `std::logic_error`.
///
/// Texts use qualified names, such as `ZEL::String`; the printer drops the namespaces in which the file declares.
class Printer {
public:
    using Values = std::initializer_list<std::pair<std::string_view, std::string>>;

    explicit Printer(std::string const & cppNamespace);

    /// A printer that knows the same values, for a file of another namespace.
    [[nodiscard]] Printer within(std::string const & cppNamespace) const;
    /// A printer that also knows these values, for any text that uses them. A value passed with a text takes precedence
    /// over a known one of the same name.
    [[nodiscard]] Printer knowing(Values const & values) const;

    /// The filled text, without a line end before its first line.
    [[nodiscard]] std::string operator()(std::string_view text, Values const & values = {}) const;

    /// The blocks, separated by blank lines; empty ones are left out.
    [[nodiscard]] static std::string blocks(std::vector<std::string> const & blocks);
    [[nodiscard]] static std::string join(std::vector<std::string> const & items, std::string_view separator);
    /// `text` as the lines of a comment that start with `mark`, wrapped for code that is indented by `indent`.
    [[nodiscard]] static std::string comment(std::string_view mark, std::string_view text, std::size_t indent = 0);
    /// `text` as a string literal.
    [[nodiscard]] static std::string quoted(std::string_view text);

private:
    [[nodiscard]] std::string shortened(std::string text) const;

    std::vector<std::string> fQualifiers; ///< "ZEL::NSInterface::", "ZEL::"
    std::map<std::string, std::string, std::less<>> fKnown;
};

} // namespace zelgen
