#include "load/Definition.h"

#include <yaml-cpp/yaml.h>

#include <fstream>
#include <functional>
#include <sstream>

namespace zelgen {
namespace {

Mark markOf(YAML::Node const & node) { return {node.Mark().line + 1, node.Mark().column + 1}; }

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

/// Turns nodes into structs; every reader names what it expects when the node is of another form.
class Loader {
public:
    Loader(std::string file, Diagnostics & diagnostics) : fFile(std::move(file)), fDiagnostics(diagnostics) {}

    Definition definition(YAML::Node const & root);

private:
    using Reader = std::function<void(YAML::Node const &)>;
    using Readers = std::vector<std::pair<std::string, Reader>>;

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
    void operations(YAML::Node const & node, std::vector<OperationDefinition> & target);

    std::string fFile;
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
    map(node, "a type",
        {{"enumeration",
          [&](YAML::Node const & value) {
              t.kind = TypeKind::Enumeration;
              t.literals = words(value, "literals");
          }},
         {"primitive",
          [&](YAML::Node const & value) {
              t.kind = word(value, "true").text == "true" ? TypeKind::Primitive : t.kind;
          }},
         {"superclasses", intoWords(t.superclasses, "names of classes")},
         {"abstract", intoWord(t.abstract, "true or false")},
         {"built_as", intoWord(t.builtAs, "class or stereotype")},
         {"hand_written",
          [&](YAML::Node const & value) {
              t.handWritten =
                  value.IsScalar() ? std::vector<Word>{word(value, "true")} : words(value, "interface, handles");
          }},
         {"properties", properties},
         {"views", views},
         {"operations", [&](YAML::Node const & value) { operations(value, t.operations); }}});
    return t;
}

Definition Loader::definition(YAML::Node const & root) {
    Definition d;
    d.file = fFile;
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
         {"types", [&](YAML::Node const & value) {
              namedEntries(value, "types",
                           [&](Word const & name, YAML::Node const & entry) { d.types.push_back(type(name, entry)); });
          }}});
    return d;
}

} // namespace

Definition parseDefinition(std::string const & text, std::string const & file, Diagnostics & diagnostics) {
    try {
        return Loader(file, diagnostics).definition(YAML::Load(text));
    } catch (YAML::Exception const & failure) {
        // Not YAML at all: the parser stops at the first place, so there is nothing more to collect.
        diagnostics.add(file, {failure.mark.line + 1, failure.mark.column + 1},
                        "found text that is not YAML (" + failure.msg + ')');
        Definition empty;
        empty.file = file;
        return empty;
    }
}

Definition loadDefinition(std::string const & path, Diagnostics & diagnostics) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        diagnostics.add(path, {}, "cannot be read, expected a metamodel definition");
        return {};
    }
    std::ostringstream text;
    text << stream.rdbuf();
    return parseDefinition(text.str(), path, diagnostics);
}

} // namespace zelgen
