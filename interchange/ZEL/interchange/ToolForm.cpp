#include <ZEL/interchange/ToolForm.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>

namespace ZEL::Interchange {

Serializer::FileForm fileFormOf(ToolForm form) {
    bool const isEclipse = form == ToolForm::EclipseUml2;
    std::string const uml = NamespaceRegistry::instance()->getMetaUri("uml");
    std::string const foreign = NamespaceRegistry::instance()->getMetaUri("Foreign");
    auto const ofUml = [&uml](char const * name) { return Serializer::QualifiedName(uml, name); };

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
    static_cast<void>(ofUml);
    return result;
}

} // namespace ZEL::Interchange
