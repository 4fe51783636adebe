#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/QualifiedName.h>

#include <map>
#include <string>
#include <vector>

namespace ZEL::Serializer {

/// How the files of another tool differ from those of this system in how they say the same: a table for the writer, see
/// `XmiWriterSettings::setFileForm`.
struct ZEL_API FileForm {
    /// A text for a property of a class and its subclasses.
    struct Rule {
        QualifiedName metaClass;
        std::string property;
        std::string text;
    };

    std::map<std::string, std::string> namespaces; ///< those of this system, and what they are called instead
    std::map<std::string, std::string> prefixes;   ///< by namespaces of this system; others keep theirs
    std::string xmiVersion;                        ///< of the root; empty for none
    bool hasEnvelopeOfOne = true;                  ///< whether a single element at the top is put into `xmi:XMI`, too
    bool hasDocumentation = true;                  ///< whether `xmi:Documentation` names the exporter
    bool areLinksElements = false;                 ///< whether links within the file are elements with `xmi:idref`
    std::vector<Rule> propertyNames;               ///< what properties are called instead
    /// Parts of the property stand in elements of the name in the rule, and links named after the property say which they
    /// are.
    std::vector<Rule> subsets;
    /// Values of data types that are to be written though they are the default of this system.
    std::vector<Rule> values;
};

} // namespace ZEL::Serializer
