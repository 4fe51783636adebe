#include "Telling.h"

#include <sstream>

namespace ZEL::oracle {

namespace {

void print(std::ostream & out, State const & state) {
    for (auto const & [property, value] : state.flags) {
        out << ' ' << property << '=' << value;
    }
    for (auto const & [property, value] : state.texts) {
        out << ' ' << property << "='" << value << '\'';
    }
    for (auto const & [property, value] : state.numbers) {
        out << ' ' << property << '=' << value;
    }
    for (auto const & [property, value] : state.references) {
        out << ' ' << property << "=#" << value;
    }
    for (auto const & [property, list] : state.lists) {
        out << ' ' << property << "=[";
        for (int const value : list) {
            out << '#' << value << ' ';
        }
        out << ']';
    }
    for (std::string const & line : state.body) {
        out << " body='" << line << '\'';
    }
    out << " container=#" << state.container;
}

} // namespace

std::string told(std::optional<State> const & state) {
    std::ostringstream out;
    if (state) {
        print(out, *state);
    } else {
        out << " (absent)";
    }
    return out.str();
}

std::string told(std::set<int> const & numbers) {
    std::ostringstream out;
    for (int const number : numbers) {
        out << '#' << number << ' ';
    }
    return out.str();
}

std::string told(Changes const & changes) {
    return "created " + told(changes.created) + "deleted " + told(changes.deleted) + "modified " +
           told(changes.modified);
}

char const * nameOf(What what) {
    static char const * const names[] = {"create",         "set flag",         "set text",      "remove text",
                                         "set number",     "remove number",    "set reference", "remove reference",
                                         "link",           "unlink",           "add body",      "erase body",
                                         "set container",  "remove container", "destroy",       "begin",
                                         "commit",         "cancel",           "undo",          "redo",
                                         "undo to level",  "redo to level",    "set maximum",   "disable undo",
                                         "clear undo",     "clear redo",       "sync",          "assign",
                                         "create deviant", "remove deviant",   "listen",        "unlisten",
                                         "replace foreign"};
    return names[static_cast<int>(what)];
}

std::string describe(Step const & step) {
    std::ostringstream out;
    out << step.deviant << ": " << nameOf(step.what);
    if (step.object != kNothing) {
        out << " #" << step.object;
    }
    out << ' ' << step.property << " value " << step.value << " index " << step.index << " '" << step.text << "' kind "
        << static_cast<int>(step.kind);
    return out.str();
}

} // namespace ZEL::oracle
