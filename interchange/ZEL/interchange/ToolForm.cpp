#include <ZEL/interchange/ToolForm.h>
#include <ZEL/interchange/UmlVersions.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>

namespace ZEL::Interchange {
namespace {

/// Whether what the versions call otherwise is called so in the form.
bool hasNamesOf(ToolForm form, UmlForm version) {
    bool const isOfBoth = version == UmlForm::Version24 || version == UmlForm::Version25;
    return isOfBoth || version == (form == ToolForm::EclipseUml2 ? UmlForm::Eclipse : UmlForm::Version251);
}

} // namespace

Serializer::FileForm fileFormOf(ToolForm form) {
    bool const isEclipse = form == ToolForm::EclipseUml2;
    std::string const uml = NamespaceRegistry::instance()->getMetaUri("uml");
    std::string const foreign = NamespaceRegistry::instance()->getMetaUri("Foreign");

    Serializer::FileForm result;
    result.namespaces = {
        {Serializer::XmiConstants::XMI_NS_URI, "http://www.omg.org/spec/XMI/20131001"},
        {uml, isEclipse ? "http://www.eclipse.org/uml2/5.0.0/UML" : "http://www.omg.org/spec/UML/20161101"},
        // Of what is foreign, all but the tags of MOF is written by its own names.
        {foreign, "http://www.omg.org/spec/MOF/20131001"},
    };
    result.prefixes = {{foreign, "mofext"}};
    result.propertyNames = {{{foreign, "Tag"}, "base_Element", "element"}};
    if (isEclipse) {
        result.xmiVersion = "20131001";
        result.hasEnvelopeOfOne = false;
        result.hasDocumentation = false;
    } else {
        result.areLinksElements = true;
    }
    for (UmlPropertyName const & row : umlPropertyNames()) {
        if (hasNamesOf(form, row.form)) {
            result.propertyNames.push_back({{uml, row.metaClass}, std::string(row.name), std::string(row.otherName)});
        }
    }
    for (UmlSubset const & row : umlSubsets()) {
        if (hasNamesOf(form, row.form)) {
            result.subsets.push_back({{uml, row.metaClass}, std::string(row.property), std::string(row.container)});
        }
    }
    for (UmlDefault const & row : umlDefaults()) {
        if (hasNamesOf(form, row.form)) {
            result.values.push_back({{uml, row.metaClass}, std::string(row.property), row.value ? "false" : "true"});
        }
    }
    return result;
}

} // namespace ZEL::Interchange
