#include <ZEL/serializer/Messages.h>

#include <libvx/MessageCatalogue.h>

#include <array>
#include <cstddef>

namespace ZEL {

namespace {

struct Row {
    char const * name;
    char const * english;  ///< arguments in order
    char const * japanese; ///< arguments by number
};

/// In the order of the identifiers.
constexpr Row rows[] = {
    {"ZEL_Serializer_XmiReader_Prologue", "Processing XMI input from %s", "%1 から XMI 入力を処理しています"},
    {"ZEL_Serializer_XmiReader_Epilogue", "Finished processing XMI input %s", "XMI 入力 %1 の処理が終了しました"},
    {"ZEL_Serializer_XmiReader_InvalidInputFile", "Invalid input XMI file : %s", "XMI ファイル %1 が無効です"},
    {"ZEL_Serializer_XmiReader_EmptyValueElement", "Read empty value for property %s of object %s",
     "オブジェクト %2 のプロパティ %1 に対して空の値を読み込みます"},
    {"ZEL_Serializer_XmiReader_InvalidTopLevelElement", "Unable to create element {%s}%s",
     "要素 {%1}%2 を作成できません"},
    {"ZEL_Serializer_XmiReader_InvalidProperty", "Element {%s}%s of type %s has no property named {%s}%s",
     "タイプ %3 の要素 {%1}%2 は、{%4}%5 という名前のプロパティがありません"},
    {"ZEL_Serializer_XmiReader_PropertyCreationError", "Unable to create property {%s}%s on %s",
     "%3 でプロパティ {%1}%2 を作成できません"},
    {"ZEL_Serializer_XmiReader_ExternalRefPrologue", "Processing external reference %s",
     "外部参照 %1 を処理しています"},
    {"ZEL_Serializer_XmiReader_ExternalRefEpilogue", "Finished processing external reference %s",
     "外部参照 %1 の処理が終了しました"},
    {"ZEL_Serializer_XmiReader_TargetModelReferenceError", "Unable to find elements corresponding to model %s",
     "モデル %1 に対応する要素が見つかりません"},
    {"ZEL_Serializer_XmiReader_ReferenceResolutionError",
     "Unable to resolve property (association) %s from %s to object with id %s",
     "プロパティ (関連) %1 を %2 から id %3 を持つオブジェクトに関連付けられません"},
    {"ZEL_Serializer_XmiReader_TargetModelInconsistency",
     "Model corresponding to {%s}%s doesn't match the model returned by the registry",
     "{%1}%2 に対応するモデルは、レジストリで返されるモデルと一致しません"},
    {"ZEL_Serializer_XmiReader_NamespacePrefixNotFound", "Namespace prefix %s not present in namespace registry",
     "名前空間の接頭辞 %1 は、名前空間のレジストリに存在しません"},
    {"ZEL_Serializer_XmiReader_InvalidXmiTypeFormat", "Invalid format for XMI type name %s",
     "XMI タイプ名 %1 に対する形式が無効です"},
    {"ZEL_Serializer_XmiReader_ModelUriSetError", "Unable to set URI of model from path %s : %s",
     "パス %1 : %2 からモデルの URI を設定できません"},
    {"ZEL_Serializer_XmiReader_InvalidBaseUri", "Undefined base URI while processing %s",
     "%1 の処理中に基本 URI を定義できません"},
    {"ZEL_Serializer_XmiReader_UriResolutionError", "Unable to resolve URI %s with base URI %s : %s",
     "基本 URI %2 : %3 を持つ URI %1 を関連付けられません"},
    {"ZEL_Serializer_XmiReader_TypeMismatch", "Type %s of property %s on %s doesn't match type %s of value %s",
     "%3 上のプロパティ %2 のタイプ %1 は、値 %5 のタイプ %4 と一致しません"},
    {"ZEL_Serializer_XmiWriter_Prologue", "Serializing XMI output to %s", "%1 への XMI 出力をシリアライズしています"},
    {"ZEL_Serializer_XmiWriter_Epilogue", "Finished serializing XMI output to %s",
     "%1 への XMI 出力のシリアライズを終了しました"},
    {"ZEL_Serializer_XmiWriter_FileOpen", "Unable to open file %s for writing",
     "書き込み用にファイル %1 を開くことができません"},
    {"ZEL_Serializer_XmiWriter_GenericError", "Error in serializing to XMI file %s",
     "XMI ファイル %1 へのシリアライズ中にエラー"},
    {"ZEL_Serializer_XmiWriter_UriLookup", "Unable to locate uri %s in NamespaceRegistry when resolving {%s}%s",
     "{%2}%3 を関連付けるときに NamespaceRegistry 内の uri %1 の位置を特定できませんでした"},
    {"ZEL_Serializer_Merger_ValueObjectCreationError", "Unable to create property %s on object %s with value %s: %s",
     "値 %3: %4 を持つオブジェクト %2 でプロパティ %1 を作成できません"},
    {"ZEL_Serializer_Merger_FactoryCreationError", "Unable to create factory for {%s}%s with type {%s}%s",
     "タイプ {%3}%4 を持つ {%1}%2 に対する出荷値を作成できません"},
    {"ZEL_Serializer_Merger_SetOrAddPropertyError", "Unable to set property %s on %s to %s : %s",
     "%2 上のプロパティ %1 を %3 : %4 に設定できません"},
};

constexpr std::size_t count = std::size(rows);
static_assert(Messages::ZEL_Serializer_Merger_SetOrAddPropertyError ==
              Messages::ZEL_Serializer_XmiReader_Prologue + count - 1);
constexpr std::uint32_t facility = 0x6D;
constexpr std::uint32_t endOfIdentifiers = 0xFFFFFFFF;

/// The catalogue wants columns. The identifiers have one slot more at the end, the Japanese texts one before the first.
struct Columns {
    std::array<std::uint32_t, count + 1> identifiers{};
    std::array<char const *, count> names{};
    std::array<char const *, count> english{};
    std::array<char const *, count + 1> japanese{};
};

constexpr Columns makeColumns() {
    Columns columns;
    columns.japanese[0] = "";
    for (std::size_t i = 0; i < count; ++i) {
        columns.identifiers[i] = Messages::ZEL_Serializer_XmiReader_Prologue + static_cast<std::uint32_t>(i);
        columns.names[i] = rows[i].name;
        columns.english[i] = rows[i].english;
        columns.japanese[i + 1] = rows[i].japanese;
    }
    columns.identifiers[count] = endOfIdentifiers;
    return columns;
}

constexpr Columns columns = makeColumns();

constexpr VxMessageTable table{
    count, facility, columns.identifiers.data(), columns.names.data(), columns.english.data(), columns.japanese.data()};

} // namespace

void Messages::addToCatalogue() {
    vx_mem_add_primary_message_table(vxGetMemoryContext(), &table);
    vx_mem_add_language(vxGetMemoryContext(), "ja", &table);
}

void Messages::removeFromCatalogue() { vx_mem_remove_primary_message_table(vxGetMemoryContext(), &table); }

} // namespace ZEL
