#pragma once

#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>

#include <string>

namespace ZEL::Serializer {

/// What Rhapsody expects in every file, and what no model holds. `uml` is the namespace of the UML types.
struct RhpTemplates {
    /// The declarations of the tool's namespaces, and where their profiles are to be found. `umlDeclaration`, that of
    /// the prefix "uml", comes first and gets the namespace that the tool knows.
    [[nodiscard]] static ContextSequence namespaces(Context const & umlDeclaration);

    /// The application of the tool's profiles to a model. `element` is one beside which they are to stand.
    [[nodiscard]] static ContextSequence profileApplications(std::string const & uml, std::string const & modelId,
                                                             Context const & element);

    /// The behavior of an active object: a state in which it runs, and an event that sends it there again and again.
    /// `element` is one beside which they are to stand. The ids are new.
    [[nodiscard]] static ContextSequence stateMachine(std::string const & uml, Context const & element);
};

} // namespace ZEL::Serializer
