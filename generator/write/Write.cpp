#include "write/Write.h"

#include "write/Fit.h"
#include "write/Visitors.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zelgen {
namespace {

namespace fs = std::filesystem;

/// The files of a run, and which of the sources are compiled together.
class Collector {
public:
    explicit Collector(Emission const & emission) : fEmission(emission) {}

    void addHeader(std::string const & name, std::string const & text) { fFiles[fEmission.path(name)] = fitted(text); }
    void addSource(std::string const & name, std::string const & text) {
        std::string const path = fEmission.path(name);
        fFiles[path] = fitted(text);
        fSources.back().push_back(path);
    }
    /// What is added from here on belongs to the next class, or enumeration.
    void startGroup() { fSources.emplace_back(); }

    void addUnits() {
        for (unsigned int unit = 0; unit < fEmission.units; ++unit) {
            std::string includes;
            for (std::size_t group = unit; group < fSources.size(); group += fEmission.units) {
                for (std::string const & source : fSources[group]) {
                    includes += "#include <" + source + ">\n";
                }
            }
            fFiles[fEmission.filePrefix() + "_family_" + std::to_string(unit + 1) + ".cpp"] =
                fEmission.print("$banner$\n$includes$\n",
                                {{"banner", fEmission.banner({}, "write/Write.cpp")}, {"includes", includes}});
        }
        fFiles[fEmission.filePrefix() + "_bootstrap.cpp"] = fitted(emitBootstrap(fEmission));
    }

    [[nodiscard]] Files const & files() const { return fFiles; }

private:
    Emission const & fEmission;
    Files fFiles;
    std::vector<std::vector<std::string>> fSources;
};

void addClass(Collector & collector, Emission const & emission, Class const & of) {
    collector.startGroup();
    if (of.hasGeneratedHandles) {
        collector.addHeader(of.name + ".h", emitHandleHeader(emission, of));
        collector.addSource(of.name + ".cpp", emitHandleSource(emission, of));
    }
    if (of.hasGeneratedInterface) {
        Emission const interfaces = emission.within("NSInterface");
        collector.addHeader(of.name + "Intf.h", emitIntfHeader(interfaces, of));
        collector.addSource(of.name + "Intf.cpp", emitIntfSource(interfaces, of));
    }
    if (!of.isAbstract) {
        Emission const implementation = emission.within("NSImplementation");
        collector.addHeader(of.name + "Impl.h", emitBodyHeader(implementation, of));
        collector.addSource(of.name + "Impl.cpp", emitBodySource(implementation, of));
        collector.addHeader(of.name + "DeviantImpl.h", emitStateHeader(implementation, of));
        collector.addSource(of.name + "DeviantImpl.cpp", emitStateSource(implementation, of));
    }
    collector.addSource(of.name + "Tables.cpp", emitTables(emission.within("tables"), of));
}

std::string readFile(fs::path const & path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void writeIfChanged(fs::path const & path, std::string const & text) {
    if (fs::exists(path) && readFile(path) == text) {
        return;
    }
    fs::create_directories(path.parent_path());
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    if (!stream.flush()) {
        throw std::runtime_error(path.string() + ": cannot be written");
    }
}

/// Takes away what an earlier run made of a class that is no more. Only files that say so in their first line are ours.
void removeStale(fs::path const & directory, std::string const & banner, Files const & files, fs::path const & root) {
    if (!fs::exists(directory)) {
        return;
    }
    std::vector<fs::path> stale;
    for (fs::directory_entry const & entry : fs::directory_iterator(directory)) {
        if (entry.is_regular_file() && files.count(fs::relative(entry.path(), root).generic_string()) == 0 &&
            readFile(entry.path()).rfind(banner, 0) == 0) {
            stale.push_back(entry.path());
        }
    }
    std::for_each(stale.begin(), stale.end(), [](fs::path const & path) { fs::remove(path); });
}

Emission emissionOf(Family const & family, WriteOptions const & options) {
    std::string const macro = !options.exportMacro.empty() ? options.exportMacro
                              : family.main().isBuiltIn()  ? "ZEL_API"
                                                           : family.main().prefix + "_API";
    return {family, family.main(), Printer(family.main().cppNamespace), macro, options.units};
}

} // namespace

Files emitFiles(Family const & family, WriteOptions const & options) {
    Emission const emission = emissionOf(family, options);
    Collector collector(emission);
    collector.addHeader("Forward.h", emitForward(emission));
    collector.addHeader("Tables.h", emitTablesHeader(emission.within("tables")));
    collector.addHeader(emission.metamodel.isBuiltIn() ? "BuiltInMetaModel.h" : "MetaModelRegistration.h",
                        emitMetamodelHeader(emission));
    for (auto const & type : emission.metamodel.types) {
        if (type->asClass != nullptr) {
            addClass(collector, emission, *type->asClass);
        } else if (!type->handWritten) {
            collector.startGroup();
            collector.addHeader(type->name + ".h", emitEnumerationHeader(emission, *type));
            collector.addSource(type->name + ".cpp", emitEnumerationSource(emission, *type));
        }
    }
    for (VisitorFiles const & visitor : emitVisitors(emission)) {
        collector.startGroup();
        collector.addHeader(visitor.name + ".h", visitor.header);
        collector.addSource(visitor.name + ".cpp", visitor.source);
    }
    collector.addUnits();
    return collector.files();
}

void write(Family const & family, WriteOptions const & options) {
    Emission const emission = emissionOf(family, options);
    Files const files = emitFiles(family, options);
    fs::path const root(options.directory);
    for (auto const & [path, text] : files) {
        writeIfChanged(root / path, text);
    }
    removeStale(root / emission.metamodel.includeDirectory, "// Generated by zelgen from " + emission.metamodel.file,
                files, root);
    if (!options.depfile.empty()) {
        std::string rule = (root / (emission.filePrefix() + "_bootstrap.cpp")).string() + ':';
        for (std::string const & input : options.inputs) {
            rule += ' ' + input;
        }
        writeIfChanged(options.depfile, rule + '\n');
    }
}

} // namespace zelgen
