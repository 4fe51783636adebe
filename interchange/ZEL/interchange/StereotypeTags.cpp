#include <ZEL/String.h>
#include <ZEL/interchange/ProfileNames.h>
#include <ZEL/interchange/StereotypeProperties.h>
#include <ZEL/interchange/StereotypeTags.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/Stereotype.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/Tokens.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/reader/RemainderReader.h>

#include <Foreign/StereotypeApplication.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace ZEL::Interchange {

using Serializer::RemainderReader;
using Serializer::takeToken;
using Serializer::XmiConstants;

namespace {

/// The values that stand in elements, and the attributes of links among these.
std::vector<StereotypeTag> tagsInElements(Remainder const & remainder) {
    std::vector<std::string_view> texts;
    for (Remainder::Element const & element : remainder.elements) {
        std::string_view const name = std::string_view(element.xml).substr(0, element.xml.find_first_of(" />"));
        if (name.find(':') == std::string_view::npos) { // blocks of tools have a namespace
            texts.emplace_back(element.xml);
        }
    }
    std::vector<StereotypeTag> tags;
    RemainderReader elements(texts);
    std::size_t depth = 0;
    for (auto event = elements.next(); event != RemainderReader::Event::Nothing; event = elements.next()) {
        if (event == RemainderReader::Event::Start && depth++ == 0) {
            std::string_view link = elements.attribute("idref", XmiConstants::XMI_NS_URI);
            link = link.empty() ? elements.attribute("href") : link;
            tags.push_back({elements.name(), std::string(link), !link.empty(), {}, {}});
        } else if (event == RemainderReader::Event::End) {
            --depth;
        } else if (event == RemainderReader::Event::Text && depth == 1 && !tags.back().isLink) {
            tags.back().text += elements.text();
        }
    }
    return tags;
}

/// The last part of the path to a file.
std::string_view nameOfFile(std::string_view uri) { return uri.substr(uri.rfind('/') + 1); }

/// Finds what links name among the objects that an application is linked to.
class Targets {
public:
    explicit Targets(Foreign::ImmutableStereotypeApplication const & application) {
        ImmutableModel const own = application.getRootModel();
        for (ImmutableClassObject const & target : application.getTargets()) {
            if (target.isValid()) {
                ImmutableModel const model = target.getRootModel();
                std::string const uri = model.getUri();
                fTargets.emplace(ObjectId::inFileOf(target),
                                 Target{std::string(nameOfFile(uri)), model == own, target});
            }
        }
    }

    /// Invalid if it is none of them. Of the path to a file its last part counts: paths change with the file.
    [[nodiscard]] ImmutableClassObject find(std::string_view link) const {
        std::size_t const sign = link.rfind('#');
        bool const isLocal = sign == std::string_view::npos || sign == 0;
        std::string_view const id = sign == std::string_view::npos ? link : link.substr(sign + 1);
        std::string_view const file = isLocal ? std::string_view() : nameOfFile(link.substr(0, sign));
        auto const [first, last] = fTargets.equal_range(std::string(id));
        for (auto target = first; target != last; ++target) {
            if (isLocal ? target->second.isOwn : target->second.file == file) {
                return target->second.object;
            }
        }
        return {};
    }

private:
    struct Target {
        std::string file;
        bool isOwn; ///< of the model of the application
        ImmutableClassObject object;
    };

    std::unordered_multimap<std::string, Target> fTargets; ///< by id
};

} // namespace

bool StereotypeTag::isOfObjects() const {
    ImmutableType const type = property.isValid() ? property.getType() : ImmutableType();
    if (isLink || !type.isValid()) {
        return isLink;
    }
    std::string const kind = type.getMetaClass().getName();
    return kind != "PrimitiveType" && kind != "DataType" && kind != "Enumeration";
}

std::vector<StereotypeTag> stereotypeTagsOf(ImmutableClassObject const & application) {
    StereotypeProperties properties;
    return stereotypeTagsOf(application, properties);
}

std::vector<StereotypeTag> stereotypeTagsOf(ImmutableClassObject const & application,
                                            StereotypeProperties & properties) {
    Foreign::ImmutableStereotypeApplication const applied(application);
    if (!applied.isValid()) {
        return {};
    }
    std::vector<StereotypeTag> tags;
    for (auto & [name, value] : StereotypeValues::of(std::string(applied.getValuesView()))) {
        tags.push_back({std::move(name), std::move(value), false, {}, {}});
    }
    for (StereotypeTag & tag : tagsInElements(remainderOf(application))) {
        tags.push_back(std::move(tag));
    }
    Targets const targets(applied);
    for (StereotypeTag & tag : tags) {
        if (applied.hasType()) {
            tag.property = properties.find(applied.getType(), tag.name);
        }
        std::string_view rest = tag.isOfObjects() ? std::string_view(tag.text) : std::string_view();
        for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
            if (ImmutableClassObject const target = targets.find(token); target.isValid()) {
                tag.objects.push_back(target);
            }
        }
    }
    return tags;
}

// --- properties ------------------------------------------------------------------------------------------------------

ImmutableProperty StereotypeProperties::find(ImmutableStereotype const & stereotype, std::string const & name) {
    auto const [entry, isNew] = fProperties.try_emplace(stereotype.getImplementation());
    if (isNew) {
        entry->second = search(stereotype);
    }
    auto const found = entry->second.find(xmlNameOf(name));
    return found != entry->second.end() ? found->second : ImmutableProperty();
}

/// Its own ones first.
StereotypeProperties::Properties StereotypeProperties::search(ImmutableClass const & stereotype) {
    Properties properties;
    std::vector<ImmutableClass> classes{stereotype};
    std::unordered_set<NSInterface::ObjectIntf const *> met{stereotype.getImplementation()};
    for (std::size_t i = 0; i < classes.size(); ++i) {
        ImmutableClass const metaClass = classes[i]; // the list grows on the way
        for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
            properties.emplace(xmlNameOf(property.getNameView()), property);
        }
        for (ImmutableClass const & general : metaClass.getSuperClasses()) {
            if (met.insert(general.getImplementation()).second) {
                classes.push_back(general);
            }
        }
    }
    return properties;
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
