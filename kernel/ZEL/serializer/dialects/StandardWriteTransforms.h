#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

namespace ZEL::Serializer {

/// Writing of plain XMI 2.1: puts `xmi:Documentation` before the first element of a model of the metamodel with prefix
/// "uml".
class ZEL_API StandardWriteTransforms : public Transformer {
public:
    StandardWriteTransforms();
    StandardWriteTransforms(StandardWriteTransforms const &) = delete;
    StandardWriteTransforms & operator=(StandardWriteTransforms const &) = delete;

private:
    [[nodiscard]] ContextSequence document();

    bool fIsDocumented = false;
};

} // namespace ZEL::Serializer
