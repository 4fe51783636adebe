#include <ZEL/interchange/UnpackingModule.h>

#include <zip.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>
#include <vector>

namespace ZEL::Interchange {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kFree = std::uint64_t(1) << 24U; ///< bytes that may come out of however few

/// The lower, the more likely a model; the number of kinds for none.
std::size_t rankOf(std::string_view name) {
    static constexpr std::array<std::string_view, 7> endings = {
        "com.nomagic.magicdraw.uml_model.model", ".uml", ".xmi", ".mdxml", ".cmof", ".emof", ".xml"};
    static constexpr std::array<std::string_view, 3> others = {"META-INF/", "__MACOSX/", "[Content_Types].xml"};
    bool const isOther =
        std::any_of(others.begin(), others.end(), [&](std::string_view begin) { return name.starts_with(begin); });
    auto const * const found =
        std::find_if(endings.begin(), endings.end(), [&](std::string_view ending) { return name.ends_with(ending); });
    return isOther ? endings.size() : static_cast<std::size_t>(found - endings.begin());
}

struct CloseArchive {
    void operator()(zip_t * archive) const { zip_discard(archive); }
};
struct CloseEntry {
    void operator()(zip_file_t * entry) const { zip_fclose(entry); }
};

/// A container, open for reading.
class Archive {
public:
    explicit Archive(std::string const & file) : fFile(file) {
        int error = 0;
        fArchive.reset(zip_open(file.c_str(), ZIP_RDONLY, &error));
        if (fArchive == nullptr) {
            zip_error_t text;
            zip_error_init_with_code(&text, error);
            std::string const reason = zip_error_strerror(&text);
            zip_error_fini(&text);
            raiseCannotUnpack(file, reason);
        }
    }

    /// The entry that is the model.
    [[nodiscard]] zip_stat_t model(UnpackingLimits const & limits) const {
        zip_int64_t const count = zip_get_num_entries(fArchive.get(), 0);
        if (static_cast<std::uint64_t>(count) > limits.entries) {
            raiseCannotUnpack(fFile, "it has more than " + std::to_string(limits.entries) + " entries");
        }
        zip_stat_t best{};
        std::size_t bestRank = rankOf({});
        for (zip_int64_t i = 0; i < count; ++i) {
            zip_stat_t stat{};
            if (zip_stat_index(fArchive.get(), static_cast<zip_uint64_t>(i), 0, &stat) != 0 || stat.name == nullptr) {
                continue;
            }
            std::size_t const rank = rankOf(stat.name);
            if (rank < bestRank || (rank == bestRank && rank < rankOf({}) && stat.size > best.size)) {
                best = stat;
                bestRank = rank;
            }
        }
        if (bestRank == rankOf({})) {
            raiseCannotUnpack(fFile, "it is a container without a model: no entry is named like one");
        }
        return best;
    }

    /// Counts what comes out itself: what the container says of the size may be wrong.
    void unpack(zip_stat_t const & stat, UnpackingLimits const & limits, std::ofstream & out) const {
        std::unique_ptr<zip_file_t, CloseEntry> const entry(zip_fopen_index(fArchive.get(), stat.index, 0));
        if (entry == nullptr) {
            raiseCannotUnpack(fFile, std::string(stat.name) + ": " + zip_strerror(fArchive.get()));
        }
        std::uint64_t const most = std::min(limits.bytes, std::max(kFree, stat.comp_size * limits.ratio));
        std::vector<char> buffer(std::size_t(1) << 16U);
        std::uint64_t size = 0;
        for (;;) {
            zip_int64_t const count = zip_fread(entry.get(), buffer.data(), buffer.size());
            if (count < 0) {
                raiseCannotUnpack(fFile, std::string(stat.name) + ": " + zip_file_strerror(entry.get()));
            }
            if (count == 0) {
                return;
            }
            size += static_cast<std::uint64_t>(count);
            if (size > most) {
                raiseCannotUnpack(fFile,
                                  std::string(stat.name) + " becomes larger than " + std::to_string(most) + " bytes");
            }
            if (!out.write(buffer.data(), static_cast<std::streamsize>(count))) {
                raiseCannotUnpack(fFile, "no room for the model in " + fs::temp_directory_path().string());
            }
        }
    }

private:
    std::string const & fFile;
    std::unique_ptr<zip_t, CloseArchive> fArchive;
};

} // namespace
} // namespace ZEL::Interchange

void zelUnpackModel(std::string const & container, ZEL::Interchange::UnpackingLimits const & limits,
                    std::string const & target, std::string & entry) {
    using namespace ZEL::Interchange;
    Archive const archive(container);
    zip_stat_t const model = archive.model(limits);
    entry = model.name;
    std::ofstream out(target, std::ios::binary | std::ios::trunc);
    archive.unpack(model, limits, out);
    if (!out.flush()) {
        raiseCannotUnpack(container, "no room for the model in " + fs::temp_directory_path().string());
    }
}
