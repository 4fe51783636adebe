#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace ZEL::Serializer {
class ReadFile;
} // namespace ZEL::Serializer

namespace ZEL::Interchange {

class StereotypeTyping;

/// Reading of stereotypes that no registered metamodel has: each becomes an instance of
/// `Foreign::StereotypeApplication`, with its names and values as texts. Where the run reads its profile as well, it
/// gets the stereotype for its type, and links to the objects that values name, see `StereotypeTags.h`.
///
/// Such elements stand after the model or at its end. Values in the form of elements are left to the reader, who may
/// keep them, and so is what MagicDraw writes about its diagrams and libraries. Does nothing unless the metamodel of
/// the instances is registered. Serves one run.
class ZEL_API StereotypeReadTransforms : public Serializer::Transformer {
public:
    StereotypeReadTransforms();
    ~StereotypeReadTransforms() override;
    StereotypeReadTransforms(StereotypeReadTransforms const &) = delete;
    StereotypeReadTransforms & operator=(StereotypeReadTransforms const &) = delete;

private:
    Serializer::ContextSequence translate(Serializer::Context const & context);
    Serializer::ContextSequence translateElement(Serializer::Context const & element);
    Serializer::ContextSequence translateValue(Serializer::Context const & attribute);
    [[nodiscard]] bool isValue(Serializer::Context const & element) const;
    void giveTypes(Serializer::ReadFile & file);

    std::string const fUri;        ///< of the metamodel of what is not understood
    std::string fInstances;        ///< the property of an object that holds its stereotype instances
    Serializer::Context fFromFile; ///< the element at hand
    Serializer::Context fTranslated;
    std::string fValues;
    std::unordered_map<std::string, std::string> fPrefixes; ///< of namespaces
    bool fHasAny = false;                                   ///< the run has read applications
    std::unique_ptr<StereotypeTyping> fTyping;              ///< once it is needed
};

} // namespace ZEL::Interchange
