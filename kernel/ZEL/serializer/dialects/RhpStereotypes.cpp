#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/RhpConstants.h>
#include <ZEL/serializer/dialects/RhpStereotypes.h>

#include <initializer_list>
#include <string_view>
#include <utility>

namespace ZEL::Serializer {
namespace {

using Names = RhpConstants;
using Kind = RhpStereotypes::Kind;

/// A feature of a stereotype instance: a link to the stereotyped element, a fixed text, or the name of its file.
struct Feature {
    enum class Value { Element, Text, FileName };

    char const * name;
    Value value = Value::Element;
    char const * text = "";
};

struct Instance {
    char const * uri;
    char const * name;
    std::vector<Feature> features;
};

constexpr Feature text(char const * name, char const * value) { return {name, Feature::Value::Text, value}; }

constexpr Feature kDescription = text("descriptionRTF", Names::EMPTY_DESCRIPTION);

using Instances = std::vector<Instance>;

/// What packages, components, data types and operations have in common.
Instances described(char const * base, std::initializer_list<Instance> more = {}) {
    Instances instances{{Names::RHP_NS_URI, "RHPStereotype", {{base}}},
                        {Names::RHAPSODY_PROFILE_NS_URI, "RhpModelElement", {{base}, kDescription}}};
    instances.insert(instances.end(), more);
    return instances;
}

Instances instancesOf(Kind kind) {
    char const * const profile = Names::RHAPSODY_PROFILE_NS_URI;
    char const * const predefined = Names::PREDEFINED_TYPES_NS_URI;
    char const * const generation = Names::CG_NS_URI;
    switch (kind) {
    case Kind::Model:
        return {{profile, "RhpProject", {{"base_Model"}}},
                {generation,
                 "Class",
                 {{"base_Model"}, text("GenerateImplicitConstructors", "True"), text("UseAsExternal", "False")}},
                {Names::CPP_CG_NS_URI, "Class", {{"base_Model"}, text("GenerateDestructor", "True")}},
                {Names::RHP_NS_URI, "RHPStereotype", {text("IsBeingGenerated", "TRUE")}},
                {profile, "RhpModelElement", {kDescription, {"base_Package"}}}};
    case Kind::Port:
        return {{profile, "RhpPort", {{"base_Port"}}},
                {profile, "RhpModelElement", {{"base_Port"}, {"base_Property"}, kDescription}}};
    case Kind::Package:
        return described("base_Package");
    case Kind::Component:
        return described("base_Class");
    case Kind::DataType:
        return described("base_DataType", {{profile, "RhpStruct", {{"base_DataType"}}}});
    case Kind::Operation:
        return described("base_Operation", {{profile, "RhpOperation", {{"base_Operation"}}}});
    case Kind::Constructor:
        return {{profile, "RhpConstructor", {{"base_Operation"}}}};
    case Kind::Destructor:
        return {{profile, "RhpDestructor", {{"base_Operation"}}}};
    case Kind::Attribute:
        return {{profile, "RhpModelElement", {{"base_Property"}, kDescription}},
                {profile, "RhpAttribute", {{"base_Property"}}}};
    case Kind::Interface:
        return described("base_Interface",
                         {{predefined, "Interface", {{"base_Interface"}}},
                          {generation, "Class", {{"base_Interface"}, text("UseAsExternal", "True")}}});
    case Kind::Class:
        return described("base_Class",
                         {{generation,
                           "Class",
                           {{"base_Class"}, {"FileName", Feature::Value::FileName}, text("UseAsExternal", "True")}}});
    case Kind::Dependency:
        return {{profile, "RhpModelElement", {{"base_Dependency"}, kDescription}},
                {predefined, "Usage", {{"base_Dependency"}}}};
    case Kind::Realization:
        return {{profile, "RhpModelElement", {{"base_Dependency"}, kDescription}}};
    }
    return {};
}

Context makeInstance(QualifiedName name) { return makeElement(name, name, ObjectId::makeNew()); }

void append(Instance const & instance, std::string const & id, std::string const & fileName, ContextSequence & result) {
    Context const element = makeInstance({instance.uri, instance.name});
    result.addContext(element);
    for (Feature const & feature : instance.features) {
        switch (feature.value) {
        case Feature::Value::Element:
            result.addContext(makeReference(element, feature.name, {}, id));
            break;
        case Feature::Value::Text:
            result.addContext(makeAttribute(element, feature.name, feature.text));
            break;
        case Feature::Value::FileName:
            result.addContext(makeAttribute(element, feature.name, fileName));
            break;
        }
    }
}

char const * directionName(std::string_view direction) {
    return direction == "in" ? "In" : direction == "out" ? "Out" : "Both";
}

} // namespace

void RhpStereotypes::setDirection(std::string const & portId, std::string const & direction) {
    auto const found = fFlowPorts.find(portId);
    if (found != fFlowPorts.end()) {
        found->second.back() = direction;
    }
}

ContextSequence RhpStereotypes::build() const {
    ContextSequence result;
    for (std::size_t i = 0; i < kKinds; ++i) {
        auto const kind = static_cast<Kind>(i);
        if (kind == Kind::Constructor || kind == Kind::Destructor) {
            appendOperations(kind, kind == Kind::Constructor ? fConstructors : fDestructors, result);
        }
        for (std::string const & id : fIds[i]) {
            appendElement(kind, id, result);
        }
    }
    return result;
}

void RhpStereotypes::appendElement(Kind kind, std::string const & id, ContextSequence & result) const {
    static std::array<Instances, kKinds> const instances = [] {
        std::array<Instances, kKinds> all;
        for (std::size_t i = 0; i < kKinds; ++i) {
            all[i] = instancesOf(static_cast<Kind>(i));
        }
        return all;
    }();
    std::string fileName;
    if (auto const named = fClassNames.find(id); named != fClassNames.end()) {
        fileName = named->second;
    }
    for (Instance const & instance : instances[indexOf(kind)]) {
        append(instance, id, fileName, result);
    }
    // What follows belongs to the last instance.
    if (kind == Kind::Port) {
        appendFlowPorts(id, result);
    } else if (kind == Kind::Operation) {
        if (auto const body = fBodies.find(id); body != fBodies.end()) {
            result.addContext(makeAttribute(Context(), "body", body->second));
        }
    } else if (kind == Kind::Attribute && fReferences.count(id) != 0) {
        result.addContext(makeAttribute(Context(), "isReference", "true"));
    }
}

void RhpStereotypes::appendOperations(Kind kind, std::vector<std::string> const & ids, ContextSequence & result) const {
    std::set<std::string> done;
    for (std::string const & id : ids) {
        if (fWrittenOperations.count(id) != 0 && done.insert(id).second) {
            appendElement(kind, id, result);
        }
    }
}

void RhpStereotypes::appendFlowPorts(std::string const & portId, ContextSequence & result) const {
    auto const found = fFlowPorts.find(portId);
    if (found == fFlowPorts.end()) {
        return;
    }
    for (std::optional<std::string> const & direction : found->second) {
        append({Names::PREDEFINED_TYPES_NS_URI, "flowPort", {{"base_Port"}}}, portId, {}, result);
        if (direction.has_value()) {
            result.addContext(makeAttribute(Context(), "direction", directionName(*direction)));
        }
    }
}

} // namespace ZEL::Serializer
