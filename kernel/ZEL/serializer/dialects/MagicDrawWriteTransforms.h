#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/Transformer.h>

#include <map>
#include <string>

namespace ZEL::Serializer {

/// Writing of MagicDraw's XMI: links to a unit become links to the enumeration literal on which the unit stands.
///
/// The first traversal finds out which literal that is. A unit without a literal keeps its own id in links. Serves one
/// run.
class ZEL_API MagicDrawWriteTransforms : public Transformer {
public:
    MagicDrawWriteTransforms();
    MagicDrawWriteTransforms(MagicDrawWriteTransforms const &) = delete;
    MagicDrawWriteTransforms & operator=(MagicDrawWriteTransforms const &) = delete;

private:
    Context fUnit;                                       ///< the unit element at hand
    std::map<std::string, std::string> fLiteralByUnitId; ///< both by id
};

} // namespace ZEL::Serializer
