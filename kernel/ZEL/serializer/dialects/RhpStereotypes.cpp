#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/RhpConstants.h>
#include <ZEL/serializer/dialects/RhpStereotypes.h>

#include <string_view>

namespace ZEL::Serializer {
namespace {

using Names = RhpConstants;
using Kind = RhpStereotypes::Kind;

/// A feature of a stereotype instance: a link to the stereotyped element, a fixed text, or the name of its file.
struct Feature {
    enum class Value { Element, Text, FileName };

    char const * name = nullptr; ///< null: there is none
    Value value = Value::Element;
    char const * text = "";
};

constexpr Feature text(char const * name, char const * value) { return {name, Feature::Value::Text, value}; }

constexpr Feature kDescription = text("descriptionRTF", Names::EMPTY_DESCRIPTION);

/// An instance that each element of a kind gets.
struct Instance {
    Kind kind;
    char const * uri;
    char const * name;
    Feature features[3];
};

constexpr char const * kRhp = Names::RHP_NS_URI;
constexpr char const * kProfile = Names::RHAPSODY_PROFILE_NS_URI;
constexpr char const * kPredefined = Names::PREDEFINED_TYPES_NS_URI;
constexpr char const * kGeneration = Names::CG_NS_URI;
constexpr Feature kFileName = {"FileName", Feature::Value::FileName};
constexpr Feature kExternal = text("UseAsExternal", "True");
constexpr Feature kInternal = text("UseAsExternal", "False");
constexpr Feature kWithConstructors = text("GenerateImplicitConstructors", "True");

constexpr Instance kInstances[] = {
    {Kind::Model, kProfile, "RhpProject", {{"base_Model"}}},
    {Kind::Model, kGeneration, "Class", {{"base_Model"}, kWithConstructors, kInternal}},
    {Kind::Model, Names::CPP_CG_NS_URI, "Class", {{"base_Model"}, text("GenerateDestructor", "True")}},
    {Kind::Model, kRhp, "RHPStereotype", {text("IsBeingGenerated", "TRUE")}},
    {Kind::Model, kProfile, "RhpModelElement", {kDescription, {"base_Package"}}},
    {Kind::Port, kProfile, "RhpPort", {{"base_Port"}}},
    {Kind::Port, kProfile, "RhpModelElement", {{"base_Port"}, {"base_Property"}, kDescription}},
    {Kind::Package, kRhp, "RHPStereotype", {{"base_Package"}}},
    {Kind::Package, kProfile, "RhpModelElement", {{"base_Package"}, kDescription}},
    {Kind::Component, kRhp, "RHPStereotype", {{"base_Class"}}},
    {Kind::Component, kProfile, "RhpModelElement", {{"base_Class"}, kDescription}},
    {Kind::DataType, kRhp, "RHPStereotype", {{"base_DataType"}}},
    {Kind::DataType, kProfile, "RhpModelElement", {{"base_DataType"}, kDescription}},
    {Kind::DataType, kProfile, "RhpStruct", {{"base_DataType"}}},
    {Kind::Operation, kRhp, "RHPStereotype", {{"base_Operation"}}},
    {Kind::Operation, kProfile, "RhpModelElement", {{"base_Operation"}, kDescription}},
    {Kind::Operation, kProfile, "RhpOperation", {{"base_Operation"}}},
    {Kind::Constructor, kProfile, "RhpConstructor", {{"base_Operation"}}},
    {Kind::Destructor, kProfile, "RhpDestructor", {{"base_Operation"}}},
    {Kind::Attribute, kProfile, "RhpModelElement", {{"base_Property"}, kDescription}},
    {Kind::Attribute, kProfile, "RhpAttribute", {{"base_Property"}}},
    {Kind::Interface, kRhp, "RHPStereotype", {{"base_Interface"}}},
    {Kind::Interface, kProfile, "RhpModelElement", {{"base_Interface"}, kDescription}},
    {Kind::Interface, kPredefined, "Interface", {{"base_Interface"}}},
    {Kind::Interface, kGeneration, "Class", {{"base_Interface"}, kExternal}},
    {Kind::Class, kRhp, "RHPStereotype", {{"base_Class"}}},
    {Kind::Class, kProfile, "RhpModelElement", {{"base_Class"}, kDescription}},
    {Kind::Class, kGeneration, "Class", {{"base_Class"}, kFileName, kExternal}},
    {Kind::Dependency, kProfile, "RhpModelElement", {{"base_Dependency"}, kDescription}},
    {Kind::Dependency, kPredefined, "Usage", {{"base_Dependency"}}},
    {Kind::Realization, kProfile, "RhpModelElement", {{"base_Dependency"}, kDescription}},
};

constexpr Instance kFlowPort = {Kind::Port, kPredefined, "flowPort", {{"base_Port"}}};

void appendInstance(Instance const & instance, std::string const & id, std::string const & fileName,
                    ContextSequence & result) {
    QualifiedName const name(instance.uri, instance.name);
    Context const element = makeElement(name, name, ObjectId::makeNew());
    result.addContext(element);
    for (Feature const & feature : instance.features) {
        if (feature.name != nullptr) {
            result.addContext(feature.value == Feature::Value::Element
                                  ? makeReference(element, feature.name, {}, id)
                                  : makeAttribute(element, feature.name,
                                                  feature.value == Feature::Value::Text ? feature.text : fileName));
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
        // Several components may name one operation, before it is known whether that is written.
        bool const isNamed = kind == Kind::Constructor || kind == Kind::Destructor;
        std::set<std::string> done;
        for (std::string const & id : fIds[i]) {
            if (!isNamed || (fWrittenOperations.count(id) != 0 && done.insert(id).second)) {
                append(kind, id, result);
            }
        }
    }
    return result;
}

void RhpStereotypes::append(Kind kind, std::string const & id, ContextSequence & result) const {
    auto const named = fClassNames.find(id);
    std::string const fileName = named != fClassNames.end() ? named->second : std::string();
    for (Instance const & instance : kInstances) {
        if (instance.kind == kind) {
            appendInstance(instance, id, fileName, result);
        }
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

void RhpStereotypes::appendFlowPorts(std::string const & portId, ContextSequence & result) const {
    auto const found = fFlowPorts.find(portId);
    if (found == fFlowPorts.end()) {
        return;
    }
    for (std::optional<std::string> const & direction : found->second) {
        appendInstance(kFlowPort, portId, {}, result);
        if (direction.has_value()) {
            result.addContext(makeAttribute(Context(), "direction", directionName(*direction)));
        }
    }
}

} // namespace ZEL::Serializer
