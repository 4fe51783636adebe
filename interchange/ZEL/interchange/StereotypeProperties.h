#pragma once

#include <ZEL/interchange/StereotypeTags.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/Stereotype.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace ZEL::Interchange {

/// The properties of stereotypes by the names that files have for them, each stereotype's found once. Valid as long as
/// nobody changes these.
class StereotypeProperties {
public:
    /// Invalid if the stereotype has none of the name, inherited ones among them.
    [[nodiscard]] ImmutableProperty find(ImmutableStereotype const & stereotype, std::string const & name);

private:
    using Properties = std::unordered_map<std::string, ImmutableProperty>;

    [[nodiscard]] static Properties search(ImmutableClass const & stereotype);

    std::unordered_map<NSInterface::ObjectIntf const *, Properties> fProperties;
};

/// `stereotypeTagsOf`, for many applications.
[[nodiscard]] std::vector<StereotypeTag> stereotypeTagsOf(ImmutableClassObject const & application,
                                                          StereotypeProperties & properties);

} // namespace ZEL::Interchange
