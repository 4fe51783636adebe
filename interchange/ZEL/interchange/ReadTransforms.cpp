#include <ZEL/interchange/CmofReadTransforms.h>
#include <ZEL/interchange/ImplicitTypeReadTransforms.h>
#include <ZEL/interchange/ReadTransforms.h>
#include <ZEL/interchange/StereotypeReadTransforms.h>
#include <ZEL/interchange/ToolNoteReadTransforms.h>
#include <ZEL/interchange/UmlReadTransforms.h>
#include <ZEL/serializer/reader/XmiReader.h>

#include <memory>

namespace ZEL::Interchange {

void addReadTransforms(Serializer::XmiReader & reader) {
    reader.addTransformer(std::make_shared<ImplicitTypeReadTransforms>());
    reader.addTransformer(std::make_shared<UmlReadTransforms>());
    reader.addTransformer(std::make_shared<CmofReadTransforms>());
    reader.addTransformer(std::make_shared<StereotypeReadTransforms>());
    reader.addTransformer(std::make_shared<ToolNoteReadTransforms>());
}

} // namespace ZEL::Interchange
