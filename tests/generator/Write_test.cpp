#include "Definitions.h"
#include "write/Write.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zelgen::test {
namespace {

namespace fs = std::filesystem;

/// A folder of its own for each test, gone behind it.
class Write : public testing::Test {
protected:
    Write()
        : folder(fs::temp_directory_path() /
                 ("zelgen-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()))) {
        options.directory = folder.string();
        options.units = 2;
    }
    ~Write() override { fs::remove_all(folder); }

    static std::string definition(std::string const & types) {
        return "prefix: app\nuris: [http://example.org/app]\nfactory_class: Maker\ntypes:\n"
               "  Maker: {superclasses: [ZEL.FactoryObject]}\n" +
               types;
    }
    void run(std::string const & types) { write(Application(definition(types)).family(), options); }
    [[nodiscard]] std::string read(std::string const & file) const {
        std::ifstream stream(folder / file);
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    fs::path folder;
    WriteOptions options;
};

TEST_F(Write, AFileThatHoldsItsTextIsLeftAlone) {
    run("  A: {superclasses: [ZEL.Element]}\n");
    fs::file_time_type const old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(folder / "app" / "A.h", old);
    fs::last_write_time(folder / "app" / "Maker.h", old);
    run("  A: {superclasses: [ZEL.Element], properties: {p: {type: ZEL.String}}}\n");
    EXPECT_EQ(fs::last_write_time(folder / "app" / "Maker.h"), old);
    EXPECT_NE(fs::last_write_time(folder / "app" / "A.h"), old);
}

TEST_F(Write, FilesOfAClassThatIsNoMoreGoAndOthersStay) {
    run("  A: {superclasses: [ZEL.Element]}\n  B: {superclasses: [ZEL.Element]}\n");
    std::ofstream(folder / "app" / "Mine.h") << "// written by hand\n";
    ASSERT_TRUE(fs::exists(folder / "app" / "BImpl.cpp"));
    run("  A: {superclasses: [ZEL.Element]}\n");
    EXPECT_FALSE(fs::exists(folder / "app" / "BImpl.cpp"));
    EXPECT_TRUE(fs::exists(folder / "app" / "AImpl.cpp"));
    EXPECT_TRUE(fs::exists(folder / "app" / "Mine.h"));
}

TEST_F(Write, EveryUnitIsThereAndHoldsWholeClasses) {
    options.units = 4;
    run("  A: {superclasses: [ZEL.Element]}\n  K: {enumeration: [x, return]}\n");
    EXPECT_NE(read("app_family_2.cpp").find("#include <app/A.cpp>"), std::string::npos);
    EXPECT_NE(read("app_family_2.cpp").find("#include <app/ATables.cpp>"), std::string::npos);
    EXPECT_NE(read("app_family_3.cpp").find("#include <app/K.cpp>"), std::string::npos);
    EXPECT_TRUE(fs::exists(folder / "app_family_4.cpp")) << "also one without a class";
    EXPECT_NE(read("app/K.h").find("enum Value { X, Return };"), std::string::npos);
    EXPECT_NE(read("app/K.cpp").find("{\"return\", Return},"), std::string::npos);
}

TEST_F(Write, VisitorsHaveTheClassesWithInstances) {
    Files const builtIn = emitFiles(builtInFamily(), options);
    for (auto const & [name, times] : {std::pair("Visitor", 2), std::pair("ImmutableVisitor", 1)}) {
        std::string expected;
        for (bool const immutable : {false, true}) {
            for (char const * const c : {"Association",      "Class",         "Comment",       "Constraint",
                                         "DataType",         "ElementImport", "Enumeration",   "EnumerationLiteral",
                                         "Expression",       "ExtensionEnd",  "Factory",       "MetaModel",
                                         "OpaqueExpression", "Operation",     "Package",       "PackageImport",
                                         "PackageMerge",     "Parameter",     "PrimitiveType", "Profile",
                                         "Property",         "Stereotype"}) {
                if (immutable || times == 2) {
                    expected += std::string("    virtual bool visit") + c + '(' + (immutable ? "Immutable" : "") + c +
                                " object) = 0;\n";
                }
            }
        }
        EXPECT_NE(builtIn.at(std::string("ZEL/metamodel/") + name + ".h").find("();\n\n" + expected + "};\n"),
                  std::string::npos)
            << name;
    }

    run("  Shape: {superclasses: [ZEL.Element], abstract: true}\n  Dot: {superclasses: [Shape]}\n");
    EXPECT_NE(read("app/Visitor.h")
                  .find("\n\n    virtual bool visitDot(Dot object) = 0;\n"
                        "    virtual bool visitMaker(Maker object) = 0;\n"
                        "    virtual bool visitDot(ImmutableDot object) = 0;\n"
                        "    virtual bool visitMaker(ImmutableMaker object) = 0;\n};\n"),
              std::string::npos);
    EXPECT_TRUE(fs::exists(folder / "app" / "ImmutableVisitorEmpty.cpp"));
}

TEST_F(Write, AClassNamedVisitorKeepsItsName) {
    run("  Museum: {superclasses: [ZEL.Element]}\n");
    ASSERT_TRUE(fs::exists(folder / "app" / "VisitorEmpty.h"));
    run("  Visitor: {superclasses: [ZEL.Element]}\n");
    EXPECT_NE(read("app/Visitor.h").find("ClassObjectHandle"), std::string::npos);
    EXPECT_FALSE(fs::exists(folder / "app" / "VisitorEmpty.h"));
}

TEST_F(Write, TheRuleForTheBuildNamesAllInputs) {
    options.depfile = (folder / "app.d").string();
    options.inputs = {"app.yaml", "zel.yaml"};
    run("");
    EXPECT_EQ(read("app.d"), (folder / "app_bootstrap.cpp").string() + ": app.yaml zel.yaml\n");
    options.depfileTarget = "app.stamp";
    run("");
    EXPECT_EQ(read("app.d"), "app.stamp: app.yaml zel.yaml\n");
}

} // namespace
} // namespace zelgen::test
