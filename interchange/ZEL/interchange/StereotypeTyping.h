#pragma once

#include <ZEL/interchange/StereotypeProperties.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Stereotype.h>
#include <ZEL/metamodel/Type.h>

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Foreign {
class StereotypeApplication;
} // namespace Foreign

namespace ZEL::Serializer {
class ReadFile;
} // namespace ZEL::Serializer

namespace ZEL::Interchange {

/// Finds the stereotypes of which a run has read applications, in the profiles that the run has read as well.
///
/// An application names its stereotype by the namespace of the profile. Tools make that of the profile's URI, or of its
/// name, or note it beside the profile. What fits more than one stereotype is left alone.
class StereotypeTyping {
public:
    /// Linear in the size of the models.
    explicit StereotypeTyping(std::vector<Model> const & models);

    /// Sets the types of all applications in the model, and links them to the objects that their values name. Reports
    /// the values that are none of the types of their properties.
    void type(Serializer::ReadFile & file);

private:
    /// What a package is called: a profile, or one within it.
    struct PackageNames {
        std::string name; ///< as in files
        std::unordered_set<std::string> uris;
    };
    struct Candidate {
        Stereotype stereotype;
        std::vector<PackageNames const *> packages; ///< around it, up to the profile
    };

    void enter(Stereotype const & stereotype);
    [[nodiscard]] PackageNames const & namesOf(ImmutablePackage const & package);
    [[nodiscard]] Stereotype find(std::string const & uri, std::string const & name, Model const & model);
    [[nodiscard]] Stereotype search(std::string const & uri, std::string const & name, Model const & model) const;
    void type(Serializer::ReadFile & file, Foreign::StereotypeApplication const & application);
    [[nodiscard]] bool isValueOf(ImmutableType const & type, std::string const & text);

    std::unordered_map<std::string, std::vector<Candidate>> fStereotypes; ///< by name, as in files
    std::unordered_map<NSInterface::ObjectIntf const *, PackageNames> fPackages;
    std::unordered_map<std::string, Stereotype> fFound; ///< in the model at hand
    StereotypeProperties fProperties;
    std::unordered_map<NSInterface::ObjectIntf const *, std::unordered_set<std::string>> fLiterals; ///< by type
};

} // namespace ZEL::Interchange
