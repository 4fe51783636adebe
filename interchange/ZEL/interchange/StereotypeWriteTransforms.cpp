#include <ZEL/interchange/ProfileNames.h>
#include <ZEL/interchange/StereotypeTags.h>
#include <ZEL/interchange/StereotypeWriteTransforms.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/dialects/DialectContexts.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>
#include <vector>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::makeAttribute;
using Serializer::Pattern;

namespace {

constexpr char kDeclarations[] = "http://www.w3.org/2000/xmlns/"; ///< the namespace of declarations of namespaces
constexpr std::size_t kDeclared = 256; ///< profiles at the root of a file: more than any tool has
constexpr char kClass[] = "StereotypeApplication";

/// Whether a file may have the prefix, whatever its encoding.
bool isPrefix(std::string const & text) {
    return !text.empty() && (std::isalpha(static_cast<unsigned char>(text.front())) != 0 || text.front() == '_') &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-' || c == '.';
           });
}

std::string prefixFor(std::string const & uri) {
    std::string const name(nameInNamespace(uri));
    return name.empty() ? "profile" : name;
}

} // namespace

StereotypeWriteTransforms::StereotypeWriteTransforms() {
    std::string const foreign = NamespaceRegistry::instance()->getMetaUri("Foreign");
    auto const value = [&](char const * name) { return Pattern().parentType(foreign, kClass).role(name); };
    addTransform(Pattern().role(kDeclarations, "Foreign"),
                 [this](Context const & declaration) { return declare(declaration); });
    addTransform(Pattern().type(foreign, kClass), [this](Context const & element) { return writeElement(element); });
    addTransform(value("profile"), taking(&Application::profile));
    addTransform(value("prefix"), taking(&Application::prefix));
    addTransform(value("stereotype"), taking(&Application::stereotype));
    addTransform(value("base"), taking(&Application::base));
    addTransform(value("values"), [this](Context const & values) { return writeValues(values); });
    addTransform(value("base_Element"), [this](Context const & link) { return writeBase(link); });
}

Serializer::RuleFunction StereotypeWriteTransforms::taking(std::string Application::*value) {
    return [this, value](Context const & attribute) -> ContextSequence {
        if (isSerializePhase()) {
            return {};
        }
        if (fAtHand != nullptr) {
            fAtHand->*value = attribute.getFirstValue();
            noteName(attribute.getFirstValue());
        }
        return attribute;
    };
}

/// The namespaces of the profiles beside that of the metamodel, which other objects may be of.
ContextSequence StereotypeWriteTransforms::declare(Context const & declaration) {
    ContextSequence sequence(declaration);
    std::set<std::string> uris;
    std::map<std::string, int> numbers;
    std::set<std::string> prefixes{"xmi", "xml", "xmlns"};
    for (auto const & [uri, prefix] : NamespaceRegistry::instance()->getMetaUriMappings()) {
        prefixes.insert(prefix);
    }
    for (auto const & [id, application] : fApplications) {
        if (uris.size() == kDeclared) {
            break; // the others are declared where they are used
        }
        if (application.profile.empty() || !uris.insert(application.profile).second) {
            continue;
        }
        std::string const made = isPrefix(application.prefix) ? application.prefix : prefixFor(application.profile);
        std::string prefix = made;
        for (int & number = numbers.try_emplace(made, 1).first->second; !prefixes.insert(prefix).second;) {
            prefix = made + std::to_string(++number);
        }
        Context further = declaration;
        further.setRole(declaration.getUri(), prefix);
        further.setAttribute(application.profile);
        sequence.addContext(further);
    }
    return sequence;
}

ContextSequence StereotypeWriteTransforms::writeElement(Context const & element) {
    if (!element.isElement()) {
        return element;
    }
    fAtHand = &fApplications[element.getFirstValue()];
    bool const hasName = !fAtHand->profile.empty() && !fAtHand->stereotype.empty();
    if (!isSerializePhase() || !hasName) {
        return element;
    }
    Context application = element;
    application.setRole(fAtHand->profile, fAtHand->stereotype);
    return application;
}

/// In the first traversal, of what will be a name of an element or attribute.
void StereotypeWriteTransforms::noteName(std::string const & name) {
    constexpr unsigned char wide = 0xC4; // begins a character that ISO 8859-1 does not have
    setHasWideNames(hasWideNames() || std::any_of(name.begin(), name.end(),
                                                  [](char c) { return static_cast<unsigned char>(c) >= wide; }));
}

ContextSequence StereotypeWriteTransforms::writeValues(Context const & values) {
    if (!isSerializePhase()) {
        for (auto const & [name, value] : StereotypeValues::of(values.getFirstValue())) {
            noteName(name);
        }
        return values;
    }
    ContextSequence sequence;
    for (auto const & [name, value] : StereotypeValues::of(values.getFirstValue())) {
        Context attribute = values;
        attribute.setRole({}, name);
        attribute.setAttribute(value);
        sequence.addContext(attribute);
    }
    return sequence;
}

ContextSequence StereotypeWriteTransforms::writeBase(Context const & link) {
    if (!isSerializePhase() || fAtHand == nullptr) {
        return link;
    }
    // One that the file applies to nothing stands on the model, for want of another place.
    if (fAtHand->base.empty()) {
        return {};
    }
    Context base = link;
    base.setRole({}, "base_" + fAtHand->base);
    return base;
}

} // namespace ZEL::Interchange
