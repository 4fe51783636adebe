#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/serializer/LinkedElement.h>
#include <ZEL/serializer/Transformer.h>

#include <map>
#include <string>

namespace ZEL::Serializer {

/// Reading of MagicDraw's XMI, ahead of the rules of plain XMI.
///
/// That tool keeps a unit as a stereotype on an enumeration literal, and what refers to a unit refers to the literal in
/// its files: such links become links to the unit. What belongs to the tool alone is left out, and so are packages that
/// are kept in another file. Serves one run.
class ZEL_API MagicDrawReadTransforms : public Transformer {
public:
    MagicDrawReadTransforms();
    MagicDrawReadTransforms(MagicDrawReadTransforms const &) = delete;
    MagicDrawReadTransforms & operator=(MagicDrawReadTransforms const &) = delete;

private:
    ContextSequence noteLiteral(Context const & context);
    void enterUnit(Context const & context, ClassObject const & object);
    [[nodiscard]] LinkedElement leadToUnit(Reference const & reference) const;

    Context fUnit; ///< the unit element being read
    /// Both by id. More than one unit may be under way: a link in one leads to another file, which has units of its
    /// own.
    std::map<std::string, std::string> fLiteralByUnitId;
    std::map<std::string, ClassObject> fUnitByLiteral;
};

} // namespace ZEL::Serializer
