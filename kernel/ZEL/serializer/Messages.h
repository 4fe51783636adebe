#pragma once

#include <ZEL/Export.h>

#include <cstdint>

namespace ZEL {

/// The messages of the reader, the writer and the merger of files, by the numbers that `Logger::log` takes.
///
/// `addToCatalogue` enters their texts, in English and Japanese, into the message catalogue of the process.
class ZEL_API Messages {
public:
    enum Id : std::uint32_t {
        ZEL_Serializer_XmiReader_Prologue = 0x006D0001,
        ZEL_Serializer_XmiReader_Epilogue,
        ZEL_Serializer_XmiReader_InvalidInputFile,
        ZEL_Serializer_XmiReader_EmptyValueElement,
        ZEL_Serializer_XmiReader_InvalidTopLevelElement,
        ZEL_Serializer_XmiReader_InvalidProperty,
        ZEL_Serializer_XmiReader_PropertyCreationError,
        ZEL_Serializer_XmiReader_ExternalRefPrologue,
        ZEL_Serializer_XmiReader_ExternalRefEpilogue,
        ZEL_Serializer_XmiReader_TargetModelReferenceError,
        ZEL_Serializer_XmiReader_ReferenceResolutionError,
        ZEL_Serializer_XmiReader_TargetModelInconsistency,
        ZEL_Serializer_XmiReader_NamespacePrefixNotFound,
        ZEL_Serializer_XmiReader_InvalidXmiTypeFormat,
        ZEL_Serializer_XmiReader_ModelUriSetError,
        ZEL_Serializer_XmiReader_InvalidBaseUri,
        ZEL_Serializer_XmiReader_UriResolutionError,
        ZEL_Serializer_XmiReader_TypeMismatch,
        ZEL_Serializer_XmiWriter_Prologue,
        ZEL_Serializer_XmiWriter_Epilogue,
        ZEL_Serializer_XmiWriter_FileOpen,
        ZEL_Serializer_XmiWriter_GenericError,
        ZEL_Serializer_XmiWriter_UriLookup,
        ZEL_Serializer_Merger_ValueObjectCreationError,
        ZEL_Serializer_Merger_FactoryCreationError,
        ZEL_Serializer_Merger_SetOrAddPropertyError,
    };

    Messages() = delete;

    static void addToCatalogue();
    static void removeFromCatalogue();
};

} // namespace ZEL
