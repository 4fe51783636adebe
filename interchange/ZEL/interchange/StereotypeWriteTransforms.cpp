#include <ZEL/interchange/StereotypeWriteTransforms.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/dialects/DialectContexts.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>
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

bool isOfName(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-'; }

/// The last part of the URI that a prefix can be made of: "Library" of "http://example.org/schemas/Library/_1/0".
std::string prefixFor(std::string const & uri) {
    std::string_view rest = uri;
    while (!rest.empty()) {
        std::size_t const slash = rest.rfind('/');
        std::string_view part = slash == std::string_view::npos ? rest : rest.substr(slash + 1);
        part = part.substr(0, part.find('.'));
        if (!part.empty() && std::isalpha(static_cast<unsigned char>(part.front())) != 0 &&
            std::all_of(part.begin(), part.end(), isOfName)) {
            return std::string(part);
        }
        rest = slash == std::string_view::npos ? std::string_view() : rest.substr(0, slash);
    }
    return "profile";
}

} // namespace

StereotypeWriteTransforms::StereotypeWriteTransforms() {
    std::string const foreign = NamespaceRegistry::instance()->getMetaUri("Foreign");
    auto const value = [&](char const * name) { return Pattern().parentType(foreign, kClass).role(name); };
    addTransform(Pattern().role(kDeclarations, "Foreign"),
                 [this](Context const & declaration) { return declare(declaration); });
    addTransform(Pattern().type(foreign, kClass), [this](Context const & element) { return writeElement(element); });
    addTransform(value("profile"), taking(&Application::profile));
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
        }
        return attribute;
    };
}

/// The namespaces of the profiles beside that of the metamodel, which other objects may be of.
ContextSequence StereotypeWriteTransforms::declare(Context const & declaration) {
    ContextSequence sequence(declaration);
    std::set<std::string> uris;
    std::map<std::string, int> numbers;
    std::set<std::string> prefixes{"xmi", "xml", "xmlns", "uml", "ZEL", declaration.getRoleName()};
    for (auto const & [id, application] : fApplications) {
        if (uris.size() == kDeclared) {
            break; // the others are declared where they are used
        }
        if (application.profile.empty() || !uris.insert(application.profile).second) {
            continue;
        }
        std::string const made = prefixFor(application.profile);
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

ContextSequence StereotypeWriteTransforms::writeValues(Context const & values) const {
    if (!isSerializePhase()) {
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

// --- values ----------------------------------------------------------------------------------------------------------

void StereotypeValues::append(std::string & lines, std::string const & name, std::string const & value) {
    lines.append(lines.empty() ? "" : "\n").append(name).append(1, '=');
    for (char const c : value) {
        if (c == '\n') {
            lines += "\\n";
        } else {
            lines.append(c == '\\' ? 2 : 1, c);
        }
    }
}

std::vector<std::pair<std::string, std::string>> StereotypeValues::of(std::string const & lines) {
    std::vector<std::pair<std::string, std::string>> values;
    for (std::size_t begin = 0; begin < lines.size();) {
        std::size_t const end = std::min(lines.find('\n', begin), lines.size());
        std::size_t const sign = lines.find('=', begin);
        if (sign < end) {
            std::string value;
            for (std::size_t at = sign + 1; at < end; ++at) {
                bool const isEscape = lines[at] == '\\' && at + 1 < end;
                at += isEscape ? 1 : 0;
                value += isEscape && lines[at] == 'n' ? '\n' : lines[at];
            }
            values.emplace_back(lines.substr(begin, sign - begin), std::move(value));
        }
        begin = end + 1;
    }
    return values;
}

} // namespace ZEL::Interchange
