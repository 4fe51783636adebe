#include "load/Definition.h"
#include "load/ReadText.h"
#include "load/Suggestion.h"

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <utility>

namespace zelgen {
namespace {

std::string kindOf(YAML::Node const & node) {
    switch (node.Type()) {
    case YAML::NodeType::Scalar:
        return "'" + node.Scalar() + "'";
    case YAML::NodeType::Sequence:
        return "a list";
    case YAML::NodeType::Map:
        return "a map";
    default:
        return "nothing";
    }
}

/// Turns nodes into structs. Each reader reports what it expects if a node has another form.
class Loader {
public:
    Loader(std::string file, Diagnostics & diagnostics) : fFile(std::move(file)), fDiagnostics(diagnostics) {}

    Definition definition(std::string const & text);

private:
    using Reader = std::function<void(YAML::Node const &)>;
    using Readers = std::vector<std::pair<std::string, Reader>>;

    [[nodiscard]] Mark markOf(YAML::Node const & node) const {
        return {node.Mark().line + 1, node.Mark().column + 1, fPart};
    }
    void expected(YAML::Node const & node, std::string const & what) {
        fDiagnostics.add(fFile, markOf(node), "found " + kindOf(node) + ", expected " + what);
    }
    Word word(YAML::Node const & node, std::string const & what);
    std::vector<Word> words(YAML::Node const & node, std::string const & what);
    void map(YAML::Node const & node, std::string const & what, Readers const & readers);
    void namedEntries(YAML::Node const & node, std::string const & what,
                      std::function<void(Word const &, YAML::Node const &)> const & entry);

    Reader intoWord(Word & target, std::string const & what) {
        return [this, &target, what](YAML::Node const & node) { target = word(node, what); };
    }
    Reader intoWords(std::vector<Word> & target, std::string const & what) {
        return [this, &target, what](YAML::Node const & node) { target = words(node, what); };
    }

    TypeDefinition type(Word const & name, YAML::Node const & node);
    PropertyDefinition property(Word const & name, YAML::Node const & node);
    ConstraintDefinition constraint(Word const & name, YAML::Node const & node);
    void operations(YAML::Node const & node, std::vector<OperationDefinition> & target);
    /// Passes the root of a file to `reader`, with `path` in messages.
    void file(std::string const & path, std::string const & text, Reader const & reader);
    void types(YAML::Node const & node, Definition & target);
    void part(Word const & name, Definition & target);

    std::string fFile;
    std::size_t fPart = 0;
    Diagnostics & fDiagnostics;
};

Word Loader::word(YAML::Node const & node, std::string const & what) {
    if (!node.IsScalar()) {
        expected(node, what);
        return {};
    }
    return {node.Scalar(), markOf(node)};
}

std::vector<Word> Loader::words(YAML::Node const & node, std::string const & what) {
    std::vector<Word> result;
    if (!node.IsSequence()) {
        expected(node, "a list of " + what);
        return result;
    }
    for (YAML::Node const & item : node) {
        result.push_back(word(item, what));
    }
    return result;
}

void Loader::namedEntries(YAML::Node const & node, std::string const & what,
                          std::function<void(Word const &, YAML::Node const &)> const & entry) {
    if (!node.IsMap()) {
        expected(node, "a map of " + what);
        return;
    }
    std::map<std::string, Mark> seen;
    for (auto const & pair : node) {
        Word const name = word(pair.first, "the name of one of the " + what);
        auto const [first, isNew] = seen.emplace(name.text, name.mark);
        if (!isNew) {
            fDiagnostics.add(fFile, name.mark,
                             "found a second '" + name.text + "' among the " + what +
                                 ", expected one; the first is at line " + std::to_string(first->second.line));
            continue;
        }
        entry(name, pair.second);
    }
}

void Loader::map(YAML::Node const & node, std::string const & what, Readers const & readers) {
    namedEntries(node, "entries of " + what, [&](Word const & key, YAML::Node const & value) {
        std::vector<std::string> known;
        for (auto const & [name, reader] : readers) {
            if (name == key.text) {
                reader(value);
                return;
            }
            known.push_back(name);
        }
        fDiagnostics.add(fFile, key.mark,
                         "found unknown entry '" + key.text + "' of " + what + suggestion(key.text, known));
    });
}

PropertyDefinition Loader::property(Word const & name, YAML::Node const & node) {
    PropertyDefinition p;
    p.name = name;
    map(node, "a property",
        {{"type", intoWord(p.type, "the name of a type")},
         {"multiplicity", intoWord(p.multiplicity, "a multiplicity such as 0..1")},
         {"flags", intoWords(p.flags, "flags")},
         {"default", intoWord(p.defaultValue, "a text")},
         {"persistence", intoWord(p.persistence, "default, transient or extension")},
         {"association", intoWord(p.association, "the name of an association")},
         {"opposite", intoWord(p.opposite, "a property such as Class.property")},
         {"owned_end", intoWord(p.ownedEnd, "the name of an end")},
         {"key", intoWord(p.key, "the end of a key")},
         {"redefines", intoWord(p.redefines, "a property such as Class.property")},
         {"stored", intoWord(p.stored, "core or body")},
         {"body", intoWord(p.body, "hand or unimplemented")},
         {"fixed", intoWord(p.fixed, "a value")},
         {"view",
          [&](YAML::Node const & value) {
              if (value.IsScalar()) {
                  p.viewOf = word(value, "the name of a property");
              } else {
                  p.view = words(value, "names of properties");
              }
          }},
         {"stereotype", intoWord(p.stereotype, "the name of a class")},
         {"base_element", intoWord(p.baseElement, "true or false")},
         {"hidden", intoWord(p.hidden, "true or false")},
         {"description", [&](YAML::Node const & value) { p.description = word(value, "a text").text; }}});
    return p;
}

ConstraintDefinition Loader::constraint(Word const & name, YAML::Node const & node) {
    ConstraintDefinition c;
    c.name = name;
    map(node, "a constraint",
        {{"severity", intoWord(c.severity, "error, warning or note")}, {"text", intoWord(c.text, "a text")}});
    return c;
}

void Loader::operations(YAML::Node const & node, std::vector<OperationDefinition> & target) {
    auto const into = [this, &target](OperationBody body) {
        return [this, &target, body](YAML::Node const & value) {
            for (Word const & signature : words(value, "operations such as 'Boolean isNavigable() const'")) {
                target.push_back({signature, body});
            }
        };
    };
    map(node, "the operations of a class",
        {{"hand", into(OperationBody::Hand)},
         {"body_only", into(OperationBody::BodyOnly)},
         {"unimplemented", into(OperationBody::Unimplemented)}});
}

TypeDefinition Loader::type(Word const & name, YAML::Node const & node) {
    TypeDefinition t;
    t.name = name;
    if (node.IsNull()) { // a class that adds nothing
        return t;
    }
    auto const properties = [&](YAML::Node const & value) {
        namedEntries(value, "properties",
                     [&](Word const & key, YAML::Node const & entry) { t.properties.push_back(property(key, entry)); });
    };
    auto const views = [&](YAML::Node const & value) {
        namedEntries(value, "views", [&](Word const & key, YAML::Node const & entry) {
            t.views.emplace_back(key, words(entry, "names of properties"));
        });
    };
    auto const constraints = [&](YAML::Node const & value) {
        namedEntries(value, "constraints", [&](Word const & key, YAML::Node const & entry) {
            t.constraints.push_back(constraint(key, entry));
        });
    };
    auto const enumerators = [&](YAML::Node const & value) {
        namedEntries(value, "enumerators", [&](Word const & literal, YAML::Node const & entry) {
            t.enumerators.emplace_back(literal, word(entry, "a name of C++"));
        });
    };
    map(node, "a type",
        {{"enumeration",
          [&](YAML::Node const & value) {
              t.kind = TypeKind::Enumeration;
              t.literals = words(value, "literals");
          }},
         {"enumerators", enumerators},
         {"primitive",
          [&](YAML::Node const & value) {
              t.kind = word(value, "true").text == "true" ? TypeKind::Primitive : t.kind;
          }},
         {"superclasses", intoWords(t.superclasses, "names of classes")},
         {"abstract", intoWord(t.abstract, "true or false")},
         {"built_as", intoWord(t.builtAs, "class or stereotype")},
         {"hand_written", intoWords(t.handWritten, "interface, handles")},
         {"properties", properties},
         {"views", views},
         {"operations", [&](YAML::Node const & value) { operations(value, t.operations); }},
         {"constraints", constraints}});
    return t;
}

void Loader::types(YAML::Node const & node, Definition & target) {
    std::size_t const others = target.types.size();
    namedEntries(node, "types", [&](Word const & name, YAML::Node const & entry) {
        auto const end = target.types.begin() + static_cast<std::ptrdiff_t>(others);
        auto const first = std::find_if(target.types.begin(), end,
                                        [&](TypeDefinition const & other) { return other.name.text == name.text; });
        if (first != end) {
            fDiagnostics.add(fFile, name.mark,
                             "found a second '" + name.text + "' among the types, expected one; the first is at " +
                                 target.fileOf(first->name.mark) + ':' + std::to_string(first->name.mark.line));
            return;
        }
        target.types.push_back(type(name, entry));
    });
}

void Loader::file(std::string const & path, std::string const & text, Reader const & reader) {
    std::string const outer = std::exchange(fFile, std::string(path));
    try {
        reader(YAML::Load(text));
    } catch (YAML::Exception const & failure) {
        // Not YAML: the parser stops at the first error, so there is nothing more to collect.
        fDiagnostics.add(fFile, {failure.mark.line + 1, failure.mark.column + 1},
                         "found text that is not YAML (" + failure.msg + ')');
    }
    fFile = outer;
}

void Loader::part(Word const & name, Definition & target) {
    std::string const path = (std::filesystem::path(target.file).parent_path() / name.text).string();
    std::optional<std::string> const text = readText(path);
    if (!text) {
        fDiagnostics.add(fFile, name.mark, "found part '" + name.text + "', expected a file that can be read");
        return;
    }
    target.parts.push_back(path);
    fPart = target.parts.size();
    file(path, *text, [&](YAML::Node const & root) {
        map(root, "a part", {{"types", [&](YAML::Node const & value) { types(value, target); }}});
    });
    fPart = 0;
}

Definition Loader::definition(std::string const & text) {
    Definition d;
    d.file = fFile;
    std::vector<Word> parts;
    file(fFile, text, [&](YAML::Node const & root) {
        map(root, "a metamodel",
            {{"prefix", intoWord(d.prefix, "a name")},
             {"namespace", intoWord(d.cppNamespace, "a C++ namespace")},
             {"include_directory", intoWord(d.includeDirectory, "a path")},
             {"top_package", intoWord(d.topPackage, "a name")},
             {"uris", intoWords(d.uris, "URIs")},
             {"also_registered", intoWords(d.alsoRegistered, "URIs")},
             {"uuid", intoWord(d.uuid, "a uuid")},
             {"model_class", intoWord(d.modelClass, "the name of a class")},
             {"factory_class", intoWord(d.factoryClass, "the name of a class")},
             {"owned_end_keys", intoWords(d.ownedEndKeys, "two texts")},
             {"parts", intoWords(parts, "files")},
             {"types", [&](YAML::Node const & value) { types(value, d); }}});
    });
    for (Word const & name : parts) {
        part(name, d);
    }
    return d;
}

} // namespace

Definition parseDefinition(std::string const & text, std::string const & file, Diagnostics & diagnostics) {
    return Loader(file, diagnostics).definition(text);
}

Definition loadDefinition(std::string const & path, Diagnostics & diagnostics) {
    std::optional<std::string> const text = readText(path);
    if (!text) {
        diagnostics.add(path, {}, "cannot be read, expected a metamodel definition");
        return {};
    }
    return parseDefinition(*text, path, diagnostics);
}

} // namespace zelgen
