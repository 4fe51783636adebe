#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/metamodel/Descriptors.h>

#include <span>

namespace ZEL {

class ClassObject;
class Integer;
class Object;
class String;

/// What `createFromString` of a generated factory does: `classes` are those of which it makes objects, in the order of
/// their names. A name may stand alone, as "Comment", or with the prefix of its metamodel, as "ZEL.Comment".
namespace internal {

/// A new object of the class; an invalid handle if there is none of this name.
[[nodiscard]] ZEL_API ClassObject createByName(ClassObjectIntf & factory, Deviant deviant,
                                               std::span<ClassDescriptor const * const> classes, String const & name);
/// The same, with this number in its model.
[[nodiscard]] ZEL_API ClassObject createByName(ClassObjectIntf & factory, Deviant deviant,
                                               std::span<ClassDescriptor const * const> classes, String const & name,
                                               Integer const & id);
/// A new object of the class, for which `text` says nothing, or else the value that `text` says in the data type of
/// this name; an invalid handle if there is neither.
[[nodiscard]] ZEL_API Object createByName(ClassObjectIntf & factory, Deviant deviant,
                                          std::span<ClassDescriptor const * const> classes, String const & name,
                                          String const & text);

} // namespace internal
} // namespace ZEL
