#pragma once

#include <ZEL/Export.h>

#include <string>

namespace ZEL {
class Model;
} // namespace ZEL

namespace ZEL::Interchange {

/// The forms in which other tools read models of UML.
enum class UmlForm {
    EclipseUml2, ///< UML2 5.0, as Papyrus and other tools on top of Eclipse read it
    Xmi251       ///< XMI 2.5.1 and UML 2.5.1, as the OMG writes them
};

/// Writes the model, with all that `addReadTransforms` may have helped to keep, in one of these forms, and makes the file
/// that of the model. Ids stay those of the file from which it was read. What the form has no word for is left out: the
/// place of the model, and the head with which this system begins its files.
///
/// The file is replaced when the new one is complete. Throws a text with the reason if it cannot be written, or the
/// model is not one of UML; its place then holds what it held before. Takes about twice the time of `XmiWriter::write`.
ZEL_API void writeAs(UmlForm form, std::string const & file, Model model);

} // namespace ZEL::Interchange
