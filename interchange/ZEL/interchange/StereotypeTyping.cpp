#include <ZEL/String.h>
#include <ZEL/interchange/ProfileNames.h>
#include <ZEL/interchange/StereotypeTags.h>
#include <ZEL/interchange/StereotypeTyping.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Profile.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/Tokens.h>
#include <ZEL/serializer/reader/ReadFile.h>
#include <ZEL/serializer/reader/RemainderReader.h>
#include <ZEL/tools/ObjectsIn.h>

#include <Foreign/StereotypeApplication.h>

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <unordered_set>
#include <utility>

namespace ZEL::Interchange {

using Serializer::ReadFile;
using Serializer::RemainderReader;
using Serializer::takeToken;

namespace {

// No profile is like that: what goes beyond is left alone, so that no file makes the search slow.
constexpr std::size_t kNamesakes = 64; ///< stereotypes of one name
constexpr std::size_t kLevels = 32;    ///< of packages in a profile

/// The namespaces that Eclipse notes in the annotations of a profile: one for each version of it.
void appendNotedUris(ImmutablePackage const & package, std::unordered_set<std::string> & uris) {
    std::vector<std::string_view> notes;
    for (Remainder::Element const & element : remainderOf(package).elements) {
        if (element.xml.find("nsURI") != std::string::npos) {
            notes.emplace_back(element.xml);
        }
    }
    if (notes.empty()) {
        return;
    }
    RemainderReader reader(notes);
    for (auto event = reader.next(); event != RemainderReader::Event::Nothing; event = reader.next()) {
        if (event == RemainderReader::Event::Start && reader.name() == "contents") {
            uris.emplace(reader.attribute("nsURI"));
        }
    }
}

bool isNumber(std::string_view text) {
    text.remove_prefix(!text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0);
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> texts) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::unordered_set<std::string> literalsOf(ImmutableEnumeration const & enumeration) {
    std::unordered_set<std::string> texts;
    for (ImmutableEnumerationLiteral const & literal : enumeration.getOwnedLiterals()) {
        texts.emplace(literal.getNameView());
        texts.insert(xmlNameOf(literal.getNameView()));
        texts.insert(ObjectId::inFileOf(literal));
    }
    return texts;
}

/// An application whose element is nowhere stands on the model, for want of another place. What it says of the element is
/// a text like others, so that the file names neither the model nor the element twice.
void releaseFromModel(Foreign::StereotypeApplication const & application) {
    Remainder rest = remainderOf(application);
    auto const link = std::find_if(rest.links.begin(), rest.links.end(), [](Remainder::Link const & kept) {
        return kept.property == "base_Element" && kept.content.empty() && kept.target.find('#') == std::string::npos;
    });
    bool const isOnModel = application.getContainerZEL() == application.getRootModel();
    if (link == rest.links.end() || !isOnModel || application.getBaseView().empty()) {
        return;
    }
    std::string values(application.getValuesView());
    StereotypeValues::append(values, "base_" + application.getBase().str(), link->target);
    application.setValues(String(values));
    application.removeBase();
    rest.links.erase(link);
    setRemainder(application, std::move(rest));
}

} // namespace

// --- stereotypes -----------------------------------------------------------------------------------------------------

StereotypeTyping::StereotypeTyping(std::vector<Model> const & models) {
    for (Model const & model : models) {
        for (ImmutableClassObject const & object : objectsIn(model)) {
            if (ImmutableStereotype(object).isValid()) {
                enter(Stereotype(model.getObjectById(object.getId())));
            }
        }
    }
}

void StereotypeTyping::enter(Stereotype const & stereotype) {
    std::vector<Candidate> & namesakes = fStereotypes[xmlNameOf(stereotype.getNameView())];
    if (namesakes.size() > kNamesakes) {
        return;
    }
    Candidate candidate{stereotype, {}};
    ImmutableClassObject at = stereotype.getContainerZEL();
    for (std::size_t level = 0; at.isValid() && level < kLevels; ++level, at = at.getContainerZEL()) {
        if (ImmutablePackage const package(at); package.isValid()) {
            candidate.packages.push_back(&namesOf(package));
            if (ImmutableProfile(at).isValid()) {
                break;
            }
        }
    }
    namesakes.push_back(std::move(candidate));
}

StereotypeTyping::PackageNames const & StereotypeTyping::namesOf(ImmutablePackage const & package) {
    auto const [entry, isNew] = fPackages.try_emplace(package.getImplementation());
    PackageNames & names = entry->second;
    if (isNew) {
        names.name = xmlNameOf(package.getNameView());
        names.uris.emplace(package.getUriView());
        appendNotedUris(package, names.uris);
    }
    return names;
}

Stereotype StereotypeTyping::find(std::string const & uri, std::string const & name, Model const & model) {
    auto const [entry, isNew] = fFound.try_emplace(uri + ' ' + name);
    if (isNew) {
        entry->second = search(uri, name, model);
    }
    return entry->second;
}

/// Invalid if none fits, or several do.
Stereotype StereotypeTyping::search(std::string const & uri, std::string const & name, Model const & model) const {
    auto const namesakes = fStereotypes.find(xmlNameOf(name));
    if (namesakes == fStereotypes.end() || namesakes->second.size() > kNamesakes || uri.empty()) {
        return {};
    }
    std::string_view const profile = nameInNamespace(uri);
    int best = 0;
    bool isOnly = false;
    Stereotype found;
    for (Candidate const & candidate : namesakes->second) {
        int fit = 0;
        for (PackageNames const * const package : candidate.packages) {
            fit = std::max(fit, package->uris.contains(uri) ? 4 : package->name == profile ? 2 : 0);
        }
        fit += fit != 0 && candidate.stereotype.getModelZEL() == model ? 1 : 0;
        if (fit != 0 && fit >= best) {
            isOnly = fit > best;
            best = fit;
            found = candidate.stereotype;
        }
    }
    return isOnly ? found : Stereotype();
}

// --- applications ----------------------------------------------------------------------------------------------------

void StereotypeTyping::type(ReadFile & file) {
    fFound.clear();
    for (ImmutableClassObject const & object : objectsIn(file.model())) {
        if (Foreign::ImmutableStereotypeApplication(object).isValid()) {
            type(file, Foreign::StereotypeApplication(file.model().getObjectById(object.getId())));
        }
    }
}

void StereotypeTyping::type(ReadFile & file, Foreign::StereotypeApplication const & application) {
    releaseFromModel(application);
    Stereotype const stereotype = find(application.getProfile(), application.getStereotype(), file.model());
    if (stereotype.isValid()) {
        application.setType(stereotype);
    }
    std::unordered_set<NSInterface::ObjectIntf const *> linked;
    for (StereotypeTag const & tag : stereotypeTagsOf(application, fProperties)) {
        if (!tag.isOfObjects()) {
            ImmutableType const type = tag.property.isValid() ? tag.property.getType() : ImmutableType();
            if (type.isValid() && !isValueOf(type, tag.text)) {
                file.reportRejected(application.getStereotype().str() + "." + tag.name);
            }
            continue;
        }
        std::string_view rest = tag.text;
        for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
            ClassObject const target = file.follow(std::string(token));
            if (target.isValid() && linked.insert(target.getImplementation()).second) {
                application.getTargets().push_back(target);
            }
        }
    }
}

/// Whether the text may be a value of the type. Of types that tools write in many ways each text is one.
bool StereotypeTyping::isValueOf(ImmutableType const & type, std::string const & text) {
    if (text.empty()) {
        return true;
    }
    std::string const name = type.getName();
    if (name == "Integer" || name == "int") {
        return isNumber(text);
    }
    if (name == "UnlimitedNatural") {
        return isNumber(text) || text == "*";
    }
    if (name == "Boolean" || name == "boolean") {
        return isOneOf(text, {"true", "false", "True", "False", "0", "1"});
    }
    ImmutableEnumeration const enumeration(type);
    if (!enumeration.isValid()) {
        return true;
    }
    auto const [literals, isNew] = fLiterals.try_emplace(type.getImplementation());
    if (isNew) {
        literals->second = literalsOf(enumeration);
    }
    return literals->second.empty() || literals->second.contains(text);
}

} // namespace ZEL::Interchange
