#include <ZEL/logging/Logger.h>
#include <ZEL/serializer/Messages.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/reader/MetaClassCache.h>
#include <ZEL/serializer/reader/ParseState.h>

#include <hasp_util/XmlConstants.h>

#include <algorithm>
#include <cstdint>

namespace ZEL::Serializer {

QualifiedName RoleNames::of(std::string const * uri, std::string const * localName) {
    auto const hash =
        (reinterpret_cast<std::uintptr_t>(localName) >> 5U) + (reinterpret_cast<std::uintptr_t>(uri) >> 4U);
    Slot & slot = fSlots[(hash ^ (hash >> 8U)) % fSlots.size()];
    if (slot.localName != localName || slot.uri != uri) {
        slot = {uri, localName, QualifiedName(*uri, *localName)};
    }
    return slot.name;
}

void TypeNames::addNamespace(std::string const & prefix, std::string const & uri) {
    if (fNamespaces.lookupNamespace(prefix).empty()) {
        if (fSaved.empty() || fSaved.back().depth != fDepth) {
            fSaved.push_back({fDepth, fNamespaces});
        }
        fNamespaces.addNamespace(prefix, uri);
        fKnown.clear();
    }
}

void TypeNames::popContext() {
    // Hardly any object has bindings of its own.
    if (!fSaved.empty() && fSaved.back().depth == fDepth) {
        fNamespaces = std::move(fSaved.back().namespaces);
        fSaved.pop_back();
        fKnown.clear();
    }
    --fDepth;
}

QualifiedName TypeNames::of(std::string_view text) {
    auto const known = fKnown.find(text);
    if (known != fKnown.end()) {
        return known->second;
    }
    std::size_t const colon = text.find(':');
    if (colon == std::string_view::npos) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_InvalidXmiTypeFormat, text);
        return QualifiedName();
    }
    std::string const prefix(text.substr(0, colon));
    std::string const & uri = fNamespaces.lookupNamespace(prefix);
    if (uri.empty()) {
        Logger::instance()->log(LogLevel::warning, Messages::ZEL_Serializer_XmiReader_NamespacePrefixNotFound, prefix);
        return QualifiedName();
    }
    return fKnown.emplace(text, QualifiedName(uri, text.substr(colon + 1))).first->second;
}

// --- plans -----------------------------------------------------------------------------------------------------------

Context ElementNames::asContext() const {
    Context context;
    context.setParentType(parentType);
    context.setParentRole(parentRole);
    context.setType(type);
    context.setRole(role);
    return context;
}

ElementPlan & ElementPlans::of(ElementNames const & names, MetaClass & holder, TransformerRegistry const & rules) {
    constexpr std::size_t slots = 256;
    if (fPlans.empty() || rules.stateOfRules() != fRules) {
        fPlans.assign(slots, ElementPlan());
        fRules = rules.stateOfRules();
    }
    std::size_t const hash =
        ((names.role.hash() * 31U + names.type.hash()) * 31U + names.parentRole.hash()) * 31U + names.parentType.hash();
    ElementPlan & plan = fPlans[(hash ^ (hash >> 8U)) % slots];
    if (plan.holder != &holder || plan.names != names) {
        MetaProperty const * const property = holder.find(names.role);
        bool const isPart = property != nullptr && !property->isDataType && property->isComposite;
        plan = ElementPlan();
        plan.names = names;
        plan.holder = &holder;
        plan.part = isPart && !rules.hasTransformFor(names.asContext()) ? property : nullptr;
    }
    return plan;
}

ElementPlan::Attribute const & ElementPlans::attributeOf(ElementPlan & plan, std::size_t place,
                                                         HASP::XmlReader::Attribute const & attribute,
                                                         RoleNames & roles, TransformerRegistry const & rules) {
    auto const isSame = [&](ElementPlan::Attribute const & known) {
        return known.localName == attribute.localName && known.uri == attribute.uri;
    };
    if (place < plan.attributes.size() && isSame(plan.attributes[place])) {
        return plan.attributes[place];
    }
    auto const found = std::find_if(plan.attributes.begin(), plan.attributes.end(), isSame);
    if (found != plan.attributes.end()) {
        return *found;
    }
    QualifiedName const role = roles.of(attribute.uri, attribute.localName);
    Context const context = plan.names.within(role, QualifiedName()).asContext();
    plan.attributes.push_back({attribute.uri, attribute.localName, role, !rules.hasTransformFor(context)});
    return plan.attributes.back();
}

// --- one file --------------------------------------------------------------------------------------------------------

ParseState::ParseState(std::string const & fileName, HASP::XmlReaderSettings const & settings)
    : xml(fileName, settings),
      xmiUri(xml.intern(XmiConstants::XMI_NS_URI)),
      xmiId(xml.intern("id")),
      xmiType(xml.intern("type")),
      xmiVersion(xml.intern("version")),
      xsiUri(xml.intern(HASP::XmlConstants::W3C_XML_SCHEMA_INSTANCE_NS_URI)) {}

} // namespace ZEL::Serializer
