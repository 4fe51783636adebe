#include "Definitions.h"
#include "host/TemporaryFolder.h"
#include "write/Write.h"

#include <gmock/gmock.h>

#include <chrono>

namespace zelgen::tests {
namespace {

namespace fs = std::filesystem;

class Write : public testing::Test {
protected:
    Write() {
        options.directory = folder.path("");
        options.units = 2;
    }

    void run(std::string const & types) { write(Application(applicationWith(types)).family(), options); }
    [[nodiscard]] bool exists(std::string const & file) const { return fs::exists(folder.path(file)); }
    [[nodiscard]] bool holds(std::string const & file, std::string const & text) const {
        return folder.content(file).find(text) != std::string::npos;
    }

    TemporaryFolder folder;
    WriteOptions options;
};

TEST_F(Write, AFileThatHoldsItsTextIsLeftAlone) {
    run("  A: {superclasses: [ZEL.Element]}\n");
    fs::file_time_type const old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(folder.path("app/A.h"), old);
    fs::last_write_time(folder.path("app/Maker.h"), old);
    run("  A: {superclasses: [ZEL.Element], properties: {p: {type: ZEL.String}}}\n");
    EXPECT_EQ(fs::last_write_time(folder.path("app/Maker.h")), old);
    EXPECT_NE(fs::last_write_time(folder.path("app/A.h")), old);
}

TEST_F(Write, OnePropertyMoreChangesOnlyTheFilesOfClassesThatHaveIt) {
    auto const filesWith = [this](std::string const & more) {
        return emitFiles(
            Application(applicationWith(
                            "  A:\n    superclasses: [ZEL.Element]\n    properties:\n      p: {type: ZEL.String}\n" +
                            more +
                            "  B: {superclasses: [ZEL.Element], properties: {a: {type: A}}}\n"
                            "  C: {superclasses: [A]}\n"))
                .family(),
            options);
    };
    Files const before = filesWith("");
    for (auto const & [name, text] : filesWith("      q: {type: ZEL.String}\n")) {
        bool const hasIt = name.rfind("app/A", 0) == 0 || name.rfind("app/C", 0) == 0;
        EXPECT_TRUE(hasIt || text == before.at(name)) << name;
    }
    EXPECT_EQ(before.count("app/APropertyTable.h"), 1U);
}

TEST_F(Write, FilesOfAClassThatIsNoMoreGoAndOthersStay) {
    run("  A: {superclasses: [ZEL.Element]}\n  B: {superclasses: [ZEL.Element]}\n");
    std::ofstream(folder.path("app/Mine.h")) << "// written by hand\n";
    ASSERT_TRUE(exists("app/BImpl.cpp"));
    run("  A: {superclasses: [ZEL.Element]}\n");
    EXPECT_FALSE(exists("app/BImpl.cpp"));
    EXPECT_TRUE(exists("app/AImpl.cpp"));
    EXPECT_TRUE(exists("app/Mine.h"));
}

TEST_F(Write, EveryUnitIsThereAndHoldsWholeClasses) {
    options.units = 4;
    run("  A: {superclasses: [ZEL.Element]}\n  K: {enumeration: [x, return, \"+\"], enumerators: {\"+\": Plus}}\n");
    EXPECT_TRUE(holds("app_family_2.cpp", "#include <app/A.cpp>"));
    EXPECT_TRUE(holds("app_family_2.cpp", "#include <app/ATables.cpp>"));
    EXPECT_TRUE(holds("app_family_3.cpp", "#include <app/K.cpp>"));
    EXPECT_TRUE(exists("app_family_4.cpp")) << "also one without a class";
    EXPECT_TRUE(holds("app/KShape.h", "enum Value { X, Return, Plus };"));
    EXPECT_TRUE(holds("app/K.cpp", "{\"+\", Plus},"));
}

TEST_F(Write, VisitorsHaveTheClassesWithInstances) {
    std::string builtIn;
    for (char const * const c : {"Association",      "Class",         "Comment",       "Constraint",
                                 "DataType",         "ElementImport", "Enumeration",   "EnumerationLiteral",
                                 "Expression",       "ExtensionEnd",  "Factory",       "MetaModel",
                                 "OpaqueExpression", "Operation",     "Package",       "PackageImport",
                                 "PackageMerge",     "Parameter",     "PrimitiveType", "Profile",
                                 "Property",         "Stereotype"}) {
        builtIn += std::string("    virtual bool visit") + c + "(Immutable" + c + " object) = 0;\n";
    }
    EXPECT_THAT(emitFiles(builtInFamily(), options).at("ZEL/metamodel/ImmutableVisitor.h"),
                testing::HasSubstr("    }\n\n" + builtIn + "\nprivate:\n"));

    run("  Shape: {superclasses: [ZEL.Element], abstract: true}\n  Dot: {superclasses: [Shape]}\n");
    EXPECT_TRUE(holds("app/Visitor.h", "    }\n\n    virtual bool visitDot(Dot object) = 0;\n"
                                       "    virtual bool visitMaker(Maker object) = 0;\n"
                                       "    virtual bool visitDot(ImmutableDot object) = 0;\n"
                                       "    virtual bool visitMaker(ImmutableMaker object) = 0;\n\nprivate:\n"));
    EXPECT_TRUE(holds("app/ImmutableVisitor.h",
                      "    }\n\n    virtual bool visitDot(ImmutableDot object) = 0;\n"
                      "    virtual bool visitMaker(ImmutableMaker object) = 0;\n\nprivate:\n"));
    EXPECT_TRUE(exists("app/ImmutableVisitorEmpty.cpp"));
}

TEST_F(Write, ElementsOfARedefinedListAreFoundByNameInTheOneInItsPlace) {
    run("  A: {superclasses: [ZEL.Element], properties: {p: {type: ZEL.Class, multiplicity: 0..*}}}\n"
        "  B: {superclasses: [A], properties: {q: {type: ZEL.Class, multiplicity: 0..*, redefines: A.p}}}\n");
    std::string const operation = "BIntf::getPByName(ZEL::Deviant deviant, ZEL::String const & name)";
    EXPECT_TRUE(holds("app/BIntf.cpp", operation + " { return getQByName(deviant, name); }"));
    EXPECT_TRUE(holds("app/BIntf.cpp", operation + " const {\n    return getQByName(deviant, name);\n"));
}

TEST_F(Write, AClassNamedVisitorKeepsItsName) {
    run("  Museum: {superclasses: [ZEL.Element]}\n");
    ASSERT_TRUE(exists("app/VisitorEmpty.h"));
    run("  Visitor: {superclasses: [ZEL.Element]}\n");
    EXPECT_TRUE(holds("app/Visitor.h", "ClassObjectHandle"));
    EXPECT_FALSE(exists("app/VisitorEmpty.h"));
}

TEST_F(Write, TheRuleForTheBuildNamesAllInputs) {
    options.depfile = folder.path("app.d");
    options.inputs = {"app.yaml", "zel.yaml"};
    run("");
    EXPECT_EQ(folder.content("app.d"), folder.path("app_bootstrap.cpp") + ": app.yaml zel.yaml\n");
    options.depfileTarget = "app.stamp";
    run("");
    EXPECT_EQ(folder.content("app.d"), "app.stamp: app.yaml zel.yaml\n");
}

} // namespace
} // namespace zelgen::tests
