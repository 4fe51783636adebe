#pragma once

#include <ZEL/metamodel/Constants.h>

#include <string_view>

namespace ZEL::Serializer {

/// Names and texts of Rhapsody's files.
struct RhpConstants {
    static constexpr char UML_2_1_1_NS_URI[] = "http://schema.omg.org/spec/UML/2.1.1";

    static constexpr char PREDEFINED_TYPES_NS_URI[] = "http:/Rhapsody/schemas/PredefinedTypes_profile.xmi";
    static constexpr char PREDEFINED_TYPES_CPP_NS_URI[] = "http:/Rhapsody/schemas/PredefinedTypesCpp_profile.xmi";
    static constexpr char RHP_NS_URI[] = "http:/Rhapsody/schemas/RHP.xmi";
    static constexpr char RHAPSODY_PROFILE_NS_URI[] = "http:/Rhapsody/schemas/RhapsodyProfile.xmi";
    static constexpr char TESSEL_NS_URI[] = "http:/Rhapsody/schemas/Tessel.xmi";
    static constexpr char CG_NS_URI[] = "http:/Rhapsody/schemas/CG.xmi";
    static constexpr char CPP_CG_NS_URI[] = "http:/Rhapsody/schemas/CPP_CG.xmi";
    static constexpr char STANDARD_PROFILE_NS_URI[] = "http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2";
    static constexpr char ECORE_NS_URI[] = "http://www.eclipse.org/emf/2002/Ecore";
    static constexpr char EMF_UML_SOURCE[] = "http://www.eclipse.org/uml2/2.0.0/UML";
    static constexpr char EMF_STANDARD_NS_URI[] = "http://www.eclipse.org/uml2/schemas/Standard/1";

    /// What the tool takes for an empty description.
    static constexpr char EMPTY_DESCRIPTION[] =
        R"(<![CDATA[{\rtf1\ansi\ansicpg1252\deff0\deflang1033{\fonttbl{\f0\fswiss\fcharset0 Arial;}}\viewkind4\uc1\pard\f0\fs20\par}]]>)";

    // The ids of this system's library of primitive types, and of its types.
    static constexpr char LIBRARY_ID[] = "_zel_5376c05e-df72-49a6-85e0-5388c3fca417";
    static constexpr char LIBRARY_INTEGER_ID[] = "_zel_5376c05e-df72-49a6-85e0-5388c3fca417_14";
    static constexpr char LIBRARY_UNLIMITED_ID[] = "_zel_5376c05e-df72-49a6-85e0-5388c3fca417_94";
    static constexpr char LIBRARY_BOOLEAN_ID[] = "_zel_5376c05e-df72-49a6-85e0-5388c3fca417_22";
    // The types of the tool that stand for them.
    static constexpr char PROFILE_INTEGER[] = "RhapsodyProfiles.xml#_D6tGfXUNEd24iMNaL4DaEg";
    static constexpr char PROFILE_BOOLEAN[] = "RhapsodyProfiles.xml#_D6tGknUNEd24iMNaL4DaEg";
};

static_assert(std::string_view(RhpConstants::UML_2_1_1_NS_URI).starts_with(OMG_SCHEMA_BASE));
static_assert(std::string_view(RhpConstants::STANDARD_PROFILE_NS_URI).starts_with(RhpConstants::UML_2_1_1_NS_URI));
static_assert(std::string_view(RhpConstants::PREDEFINED_TYPES_NS_URI).starts_with(RHP_SCHEMA_BASE));
static_assert(std::string_view(RhpConstants::ECORE_NS_URI).starts_with(EMF_SCHEMA_BASE));

} // namespace ZEL::Serializer
