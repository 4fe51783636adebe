#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <map>
#include <string>

namespace ZEL::Interchange {

/// Writing of what `StereotypeReadTransforms` has read, in the form that it had: an element named after the stereotype, in
/// the namespace of the profile, with the values as attributes. Serves one run.
class ZEL_API StereotypeWriteTransforms : public Serializer::Transformer {
public:
    StereotypeWriteTransforms();
    StereotypeWriteTransforms(StereotypeWriteTransforms const &) = delete;
    StereotypeWriteTransforms & operator=(StereotypeWriteTransforms const &) = delete;

private:
    /// What has been collected of an application.
    struct Application {
        std::string profile;
        std::string prefix;
        std::string stereotype;
        std::string base;
    };

    Serializer::ContextSequence declare(Serializer::Context const & declaration);
    Serializer::ContextSequence writeElement(Serializer::Context const & element);
    Serializer::ContextSequence writeValues(Serializer::Context const & values);
    Serializer::ContextSequence writeBase(Serializer::Context const & link);
    void noteName(std::string const & name);
    /// A rule that notes a value while objects are collected, and leaves it out while they are written.
    [[nodiscard]] Serializer::RuleFunction taking(std::string Application::*value);

    std::map<std::string, Application> fApplications; ///< by id
    Application * fAtHand = nullptr;
};

} // namespace ZEL::Interchange
