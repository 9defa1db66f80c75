#include "section/ModelDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>

#include "section/Failure.h"
#include "section/TestFiles.h"

namespace section {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ModelDocument : public test::InFolder {
protected:
    std::filesystem::path m_path = m_folder / "model.xml";

    /// What loading a document with `content` fails with, without its path.
    std::string LoadFailure(const std::string& content) const {
        const std::filesystem::path path = Write("damaged.xml", content);
        try {
            LoadModel(path);
        } catch (const Failure& failure) {
            EXPECT_THAT(failure.what(), StartsWith(path.string() + ": "));
            return std::string(failure.what()).substr(path.string().size() + 2);
        }
        return "no failure";
    }

    /// The same for a good document in which `old` is replaced.
    std::string FailureWith(const std::string& old, const std::string& replacement) {
        StoreModel(Tetrahedron(), m_path);
        std::string content = test::Content(m_path);
        EXPECT_NE(content.find(old), content.npos) << old;
        content.replace(content.find(old), old.size(), replacement);
        return LoadFailure(content);
    }

    static std::string StoreFailure(const std::filesystem::path& path) {
        try {
            StoreModel(Tetrahedron(), path);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "no failure";
    }

    static Model Tetrahedron() {
        return Model("a.stl", Mesh{test::Tetrahedron()}, Cut{.m_count = 2});
    }
};

TEST_F(ModelDocument, IsIndentedForPeople) {
    StoreModel(Tetrahedron(), m_path);
    EXPECT_EQ(test::Content(m_path),
              "<Section>\n"
              "\t<Version>1</Version>\n"
              "\t<Model>\n"
              "\t\t<File>a.stl</File>\n"
              "\t\t<Facets>4</Facets>\n"
              "\t\t<Bounds>\n"
              "\t\t\t<X>\n"
              "\t\t\t\t<Rg>0 1</Rg>\n"
              "\t\t\t</X>\n"
              "\t\t\t<Y>\n"
              "\t\t\t\t<Rg>0 2</Rg>\n"
              "\t\t\t</Y>\n"
              "\t\t\t<Z>\n"
              "\t\t\t\t<Rg>0 4</Rg>\n"
              "\t\t\t</Z>\n"
              "\t\t</Bounds>\n"
              "\t\t<Layers>\n"
              "\t\t\t<Rg>0 4</Rg>\n"
              "\t\t\t<Layer>\n"
              "\t\t\t\t<Rg>0 2</Rg>\n"
              "\t\t\t\t<Facets>4</Facets>\n"
              "\t\t\t</Layer>\n"
              "\t\t\t<Layer>\n"
              "\t\t\t\t<Rg>2 4</Rg>\n"
              "\t\t\t\t<Facets>3</Facets>\n"
              "\t\t\t</Layer>\n"
              "\t\t</Layers>\n"
              "\t</Model>\n"
              "</Section>");
}

TEST_F(ModelDocument, ComesBackAsItWasStored) {
    StoreModel(Tetrahedron(), m_path);
    EXPECT_EQ(FirstDifference(Tetrahedron(), LoadModel(m_path)), "");
}

TEST_F(ModelDocument, ComesBackWithinSixDigitsWhateverTheNumbers) {
    EXPECT_TRUE(rc::check("a stored model and the loaded one are the same", [this] {
        const auto coordinate =
            rc::gen::map(rc::gen::pair(rc::gen::arbitrary<int>(), rc::gen::inRange(-60, 60)),
                         [](const auto& parts) {
                             return std::ldexp(static_cast<float>(parts.first), parts.second);
                         });
        Mesh mesh;
        mesh.m_facets.resize(*rc::gen::inRange<std::size_t>(1, 10));
        for (Facet& facet : mesh.m_facets) {
            for (Point& corner : facet) {
                corner = {*coordinate, *coordinate, *coordinate};
            }
        }
        const Model model("a.stl", mesh, Cut{.m_count = *rc::gen::inRange(1, 50)});
        StoreModel(model, m_path);
        RC_ASSERT(FirstDifference(model, LoadModel(m_path)) == "");
    }));
}

TEST_F(ModelDocument, KeepsAnyPrintableName) {
    for (const std::string name : {"Würfel & <Kugel>.stl", "  two  blanks ", "a'b\"c", ""}) {
        const Model model(name, Mesh{test::Tetrahedron()}, {});
        StoreModel(model, m_path);
        EXPECT_EQ(LoadModel(m_path).m_source, CString(name));
    }
}

TEST_F(ModelDocument, KeepsACountOfMoreThan31Bits) {
    Model model = Tetrahedron();
    model.m_nFacets = 0xFFFFFFFF;
    StoreModel(model, m_path);
    EXPECT_EQ(LoadModel(m_path).m_nFacets, 0xFFFFFFFF);
}

TEST_F(ModelDocument, HoldsManyLayers) {
    const Model model("a.stl", Mesh{test::Tetrahedron()}, Cut{.m_count = 70000});
    StoreModel(model, m_path);
    EXPECT_EQ(FirstDifference(model, LoadModel(m_path)), "");
}

TEST_F(ModelDocument, TakesThePlaceOfAnOlderOne) {
    Write("model.xml", "older");
    StoreModel(Tetrahedron(), m_path);
    EXPECT_EQ(LoadModel(m_path).m_nFacets, 4u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder), {}), 1);
}

TEST_F(ModelDocument, ThatCannotBeWrittenIsNamedWithTheReason) {
    const std::filesystem::path nowhere = m_folder / "none" / "model.xml";
    EXPECT_EQ(StoreFailure(nowhere), nowhere.string() + ": No such file or directory");
    EXPECT_EQ(StoreFailure(m_folder), m_folder.string() + ": Is a directory");
    EXPECT_TRUE(std::filesystem::is_empty(m_folder));
}

TEST_F(ModelDocument, ThatIsNotThereIsNamed) {
    try {
        LoadModel(m_path);
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_THAT(failure.what(), StartsWith(m_path.string() + ": "));
    }
}

TEST_F(ModelDocument, ThatIsNoXmlIsRefusedWithItsPlace) {
    EXPECT_THAT(FailureWith("</Bounds>", "</Bound>"), StartsWith("line 16, column 3: "));
    EXPECT_THAT(LoadFailure("<Section>\n <Model>\n"), StartsWith("line "));
    EXPECT_THAT(LoadFailure(""), testing::Not("no failure"));
}

TEST_F(ModelDocument, WithAnotherRootIsRefused) {
    EXPECT_EQ(LoadFailure("<svg/>"), "no stored model: its root is 'svg', not 'Section'");
}

TEST_F(ModelDocument, OfAnotherVersionIsRefused) {
    EXPECT_EQ(FailureWith("<Version>1<", "<Version>2<"),
              "a model of version 2, and this program knows version 1");
}

TEST_F(ModelDocument, WithoutAnElementIsRefused) {
    const std::string missing = " is missing or damaged";
    EXPECT_EQ(LoadFailure("<Section/>"), "no whole model: the element Section/Model" + missing);
    EXPECT_EQ(FailureWith("<Facets>4</Facets>", ""),
              "no whole model: the element Section/Model/Facets" + missing);
    EXPECT_THAT(FailureWith("<Facets>3</Facets>", "<Facets>many</Facets>"),
                EndsWith("Section/Model/Layers/Layer/Facets" + missing));
    EXPECT_THAT(FailureWith("<Rg>0 4</Rg>", ""), EndsWith("Section/Model/Bounds/Z/Rg" + missing));
    EXPECT_THAT(
        LoadFailure("<Section><Version>1</Version><Model><Facets>1</Facets></Model></Section>"),
        EndsWith("Section/Model/Bounds" + missing));
}

TEST_F(ModelDocument, WithoutLayersIsRefused) {
    StoreModel(Tetrahedron(), m_path);
    std::string content = test::Content(m_path);
    const std::size_t begin = content.find("<Layer>");
    content.erase(begin, content.find("</Layers>") - begin);
    EXPECT_THAT(LoadFailure(content), EndsWith("Section/Model/Layers/Layer is missing or damaged"));
}

TEST_F(ModelDocument, WithLimitsThatMakeNoIntervalIsRefused) {
    for (const std::string limits : {"", "0", "x y", "0 x", "2 1", "nan nan", "0 inf", "0 1e999"}) {
        EXPECT_THAT(FailureWith("<Rg>0 1</Rg>", "<Rg>" + limits + "</Rg>"),
                    EndsWith("Section/Model/Bounds/X/Rg is missing or damaged"))
            << limits;
    }
}

}  // namespace
}  // namespace section
