#pragma once

#include "check/Check.h"
#include "family/Family.h"
#include "load/Definition.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace zelgen::tests {

inline std::string builtInFile() { return ZEL_SOURCE_DIR "/metamodel/zel.metamodel.yaml"; }

/// The built-in metamodel as the generator sees it.
inline Definition const & builtIn() {
    static Definition const definition = [] {
        Diagnostics diagnostics;
        Definition loaded = loadDefinition(builtInFile(), diagnostics);
        if (!diagnostics.empty()) {
            throw std::runtime_error(diagnostics.messages().front());
        }
        return loaded;
    }();
    return definition;
}

inline Family const & builtInFamily() {
    static Family const family({&builtIn()});
    return family;
}

/// A definition that is right, with types besides the factory's; those begin at line 6.
inline std::string applicationWith(std::string const & types) {
    return "prefix: app\nuris: [http://example.org/app]\nfactory_class: Maker\ntypes:\n"
           "  Maker: {superclasses: [ZEL.FactoryObject]}\n" +
           types;
}

/// What is wrong with an application's definition that builds on the built-in one, in the order of places.
/// `file` is the name of the file that the text is from.
inline std::vector<std::string> mistakesIn(std::string const & text, std::string const & file = "app.yaml") {
    Diagnostics diagnostics;
    Definition const definition = parseDefinition(text, file, diagnostics);
    if (diagnostics.empty()) {
        check({&definition, &builtIn()}, diagnostics);
    }
    return diagnostics.messages();
}

/// The family of a correct application's definition, and what it points into.
class Application {
public:
    explicit Application(std::string const & text, std::string const & file = "app.yaml")
        : fDefinition(parse(text, file)), fFamily({&fDefinition, &builtIn()}) {}

    [[nodiscard]] Family const & family() const { return fFamily; }
    [[nodiscard]] Class const & operator[](std::string const & name) const {
        return *fFamily.findClass(fFamily.main().prefix + '.' + name);
    }

private:
    static Definition parse(std::string const & text, std::string const & file) {
        if (auto const mistakes = mistakesIn(text, file); !mistakes.empty()) {
            throw std::runtime_error(mistakes.front());
        }
        Diagnostics diagnostics;
        return parseDefinition(text, file, diagnostics);
    }

    Definition fDefinition;
    Family fFamily;
};

} // namespace zelgen::tests
