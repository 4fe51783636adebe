// Any bytes as a model file: read for itself, and merged into a model that is there. What fails leaves that model as it
// was; what succeeds is undone in one step; nothing stays alive.

#include <ZEL/Cleanup.h>
#include <ZEL/Initialize.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/serializer/Merger.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/tools/Comparator.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view kPresent = R"(<?xml version="1.0" encoding="utf-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:ZEL="http://schema.omg.org/spec/MOF/2.0">
  <ZEL:MetaModel xmi:id="_zel_u" name="present">
    <topPackage xmi:id="_zel_u_2" xmi:type="ZEL:Package" name="top">
      <packagedElement xmi:id="_zel_u_3" xmi:type="ZEL:Class" name="A">
        <ownedAttribute xmi:id="_zel_u_4" xmi:type="ZEL:Property" name="b" type="_zel_u_5" association="_zel_u_6"/>
      </packagedElement>
      <packagedElement xmi:id="_zel_u_5" xmi:type="ZEL:Class" name="B" superClass="_zel_u_3">
        <ownedAttribute xmi:id="_zel_u_7" xmi:type="ZEL:Property" name="a" type="_zel_u_3" association="_zel_u_6"/>
      </packagedElement>
      <packagedElement xmi:id="_zel_u_6" xmi:type="ZEL:Association" memberEnd="_zel_u_4 _zel_u_7"/>
    </topPackage>
  </ZEL:MetaModel>
</xmi:XMI>
)";

/// Two files of this process, gone at its end.
class Files {
public:
    Files() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zel-fuzz-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            std::perror(pattern.c_str());
            std::exit(1);
        }
        fFolder = pattern;
        write("present.xmi", kPresent);
    }
    ~Files() {
        std::error_code ignored;
        std::filesystem::remove_all(fFolder, ignored);
    }
    Files(Files const &) = delete;
    Files & operator=(Files const &) = delete;

    std::string write(char const * name, std::string_view content) const {
        std::string const path = (fFolder / name).string();
        std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
        return path;
    }
    [[nodiscard]] std::string present() const { return (fFolder / "present.xmi").string(); }

private:
    std::filesystem::path fFolder;
};

void require(bool holds, char const * claim) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", claim);
        std::abort();
    }
}

/// False if the read failed.
bool isRead(ZEL::Serializer::XmiReader & reader, std::string const & file) {
    try {
        static_cast<void>(reader.read(file));
        return true;
    } catch (std::exception const &) {
        return false;
    }
}

void readAndMerge(Files const & files, std::string const & file) {
    ZEL::Serializer::XmiReader reader;
    static_cast<void>(isRead(reader, file));

    ZEL::MetaModel const model(ZEL::Serializer::XmiReader().read(files.present()));
    ZEL::MetaModel const before(ZEL::Serializer::XmiReader().read(files.present()));
    ZEL::Deviant const root = model.getRootDeviant();
    root.clearUndoStack();
    reader.setMerger(std::make_shared<ZEL::Serializer::Merger>(model));
    if (isRead(reader, file) && root.getUndoStackLength() != 0) {
        require(root.getUndoStackLength() == 1, "a merge is one step of undo");
        root.undo();
    }
    require(ZEL::compare(model, before), "the model is as it was before the merge");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size) {
    static Files const files;
    std::string const file = files.write("input.xmi", {reinterpret_cast<char const *>(data), size});
    static bool const isWarm = (readAndMerge(files, file), true); // makes what stays for the process
    static_cast<void>(isWarm);
    int const alive = ZEL::Cleanup::numberOfActiveObjects();
    readAndMerge(files, file);
    require(ZEL::Cleanup::numberOfActiveObjects() <= alive, "no object stays alive");
    return 0;
}
