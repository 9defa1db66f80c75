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
        std::string content = Stored();
        EXPECT_NE(content.find(old), content.npos) << old;
        content.replace(content.find(old), old.size(), replacement);
        return LoadFailure(content);
    }

    /// A good document.
    std::string Stored() const {
        StoreModel(Tetrahedron(), m_path);
        return test::Content(m_path);
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
              "\t<Version>4</Version>\n"
              "\t<Model>\n"
              "\t\t<File>a.stl</File>\n"
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
              "\t\t<Facings>\n"
              "\t\t\t<Side>3</Side>\n"
              "\t\t\t<Horizontal>1</Horizontal>\n"
              "\t\t\t<Degenerate>0</Degenerate>\n"
              "\t\t</Facings>\n"
              "\t\t<Layers>\n"
              "\t\t\t<Rg>0 4</Rg>\n"
              "\t\t\t<Step>2</Step>\n"
              "\t\t\t<Knots>3</Knots>\n"
              "\t\t\t<LongestCover>0 1</LongestCover>\n"
              "\t\t\t<ScanLines>64</ScanLines>\n"
              "\t\t\t<Layer>\n"
              "\t\t\t\t<Rg>0 2</Rg>\n"
              "\t\t\t\t<Facets>4</Facets>\n"
              "\t\t\t\t<Facing>\n"
              "\t\t\t\t\t<State>2</State>\n"
              "\t\t\t\t\t<Rg>3.14159 0.463648</Rg>\n"
              "\t\t\t\t</Facing>\n"
              "\t\t\t\t<Contours>\n"
              "\t\t\t\t\t<Loops>1</Loops>\n"
              "\t\t\t\t\t<Open>0</Open>\n"
              "\t\t\t\t\t<Length>3.92705</Length>\n"
              "\t\t\t\t\t<Run>0 0 0 3</Run>\n"
              "\t\t\t\t</Contours>\n"
              "\t\t\t\t<Fill>\n"
              "\t\t\t\t\t<Material>18</Material>\n"
              "\t\t\t\t\t<Voids>46</Voids>\n"
              "\t\t\t\t\t<Carried>0</Carried>\n"
              "\t\t\t\t\t<Slivers>0</Slivers>\n"
              "\t\t\t\t\t<Unpaired>0</Unpaired>\n"
              "\t\t\t\t</Fill>\n"
              "\t\t\t\t<Reach>\n"
              "\t\t\t\t\t<Contours>1</Contours>\n"
              "\t\t\t\t\t<Reached>1</Reached>\n"
              "\t\t\t\t\t<Free>6.28319</Free>\n"
              "\t\t\t\t\t<Hardest>\n"
              "\t\t\t\t\t\t<State>0</State>\n"
              "\t\t\t\t\t\t<Rg>3.14159 3.14159</Rg>\n"
              "\t\t\t\t\t</Hardest>\n"
              "\t\t\t\t</Reach>\n"
              "\t\t\t</Layer>\n"
              "\t\t\t<Layer>\n"
              "\t\t\t\t<Rg>2 4</Rg>\n"
              "\t\t\t\t<Facets>3</Facets>\n"
              "\t\t\t\t<Facing>\n"
              "\t\t\t\t\t<State>2</State>\n"
              "\t\t\t\t\t<Rg>3.14159 0.463648</Rg>\n"
              "\t\t\t\t</Facing>\n"
              "\t\t\t\t<Contours>\n"
              "\t\t\t\t\t<Loops>1</Loops>\n"
              "\t\t\t\t\t<Open>0</Open>\n"
              "\t\t\t\t\t<Length>1.30902</Length>\n"
              "\t\t\t\t\t<Run>0 0 0 3</Run>\n"
              "\t\t\t\t</Contours>\n"
              "\t\t\t\t<Fill>\n"
              "\t\t\t\t\t<Material>2</Material>\n"
              "\t\t\t\t\t<Voids>62</Voids>\n"
              "\t\t\t\t\t<Carried>1</Carried>\n"
              "\t\t\t\t\t<Slivers>0</Slivers>\n"
              "\t\t\t\t\t<Unpaired>0</Unpaired>\n"
              "\t\t\t\t</Fill>\n"
              "\t\t\t\t<Reach>\n"
              "\t\t\t\t\t<Contours>1</Contours>\n"
              "\t\t\t\t\t<Reached>1</Reached>\n"
              "\t\t\t\t\t<Free>6.28319</Free>\n"
              "\t\t\t\t\t<Hardest>\n"
              "\t\t\t\t\t\t<State>0</State>\n"
              "\t\t\t\t\t\t<Rg>3.14159 3.14159</Rg>\n"
              "\t\t\t\t\t</Hardest>\n"
              "\t\t\t\t</Reach>\n"
              "\t\t\t</Layer>\n"
              "\t\t</Layers>\n"
              "\t\t<Mesh>\n"
              "\t\t\t<Vertices>\n"
              "\t\t\t\t<BB>\n"
              "\t\t\t\t\t<SR>12</SR>\n"
              "\t\t\t\t\t<C>4</C>\n"
              "\t\t\t\t\t<Bn>1</Bn>\n"
              "\t\t\t\t\t<Dt>000000000000000000000000"
              "000000000000004000000000"
              "0000803F0000000000000000"
              "000000000000000000008040</Dt>\n"
              "\t\t\t\t</BB>\n"
              "\t\t\t</Vertices>\n"
              "\t\t\t<Facets>\n"
              "\t\t\t\t<BB>\n"
              "\t\t\t\t\t<SR>12</SR>\n"
              "\t\t\t\t\t<C>4</C>\n"
              "\t\t\t\t\t<Bn>1</Bn>\n"
              "\t\t\t\t\t<Dt>000000000100000002000000"
              "000000000200000003000000"
              "000000000300000001000000"
              "020000000100000003000000</Dt>\n"
              "\t\t\t\t</BB>\n"
              "\t\t\t</Facets>\n"
              "\t\t</Mesh>\n"
              "\t\t<Input>\n"
              "\t\t\t<Size>0</Size>\n"
              "\t\t</Input>\n"
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
        std::vector<Facet> facets(*rc::gen::inRange<std::size_t>(1, 10));
        for (Facet& facet : facets) {
            for (Point& corner : facet) {
                corner = {*coordinate, *coordinate, *coordinate};
            }
        }
        const Model model("a.stl", facets, Cut{.m_count = *rc::gen::inRange(1, 50)});
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
    model.m_facings.m_nSide = 0xFFFFFFFF;
    StoreModel(model, m_path);
    EXPECT_EQ(LoadModel(m_path).m_facings.m_nSide, 0xFFFFFFFF);
}

TEST_F(ModelDocument, HoldsManyLayers) {
    const Model model("a.stl", Mesh{test::Tetrahedron()}, Cut{.m_count = 70000});
    StoreModel(model, m_path);
    EXPECT_EQ(FirstDifference(model, LoadModel(m_path)), "");
}

TEST_F(ModelDocument, TakesThePlaceOfAnOlderOne) {
    Write("model.xml", "older");
    StoreModel(Tetrahedron(), m_path);
    EXPECT_EQ(LoadModel(m_path).m_mesh.FacetCount(), 4u);
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
    EXPECT_THAT(FailureWith("</Bounds>", "</Bound>"), StartsWith("line 15, column 3: "));
    EXPECT_THAT(LoadFailure("<Section>\n <Model>\n"), StartsWith("line "));
    EXPECT_THAT(LoadFailure(""), testing::Not("no failure"));
}

TEST_F(ModelDocument, WithAnotherRootIsRefused) {
    EXPECT_EQ(LoadFailure("<svg/>"), "no stored model: its root is 'svg', not 'Section'");
}

TEST_F(ModelDocument, OfAnotherVersionIsRefused) {
    for (const std::string version : {"1", "2", "3", "5"}) {
        EXPECT_EQ(FailureWith("<Version>4<", "<Version>" + version + "<"),
                  "a model of version " + version + ", and this program knows version 4");
    }
}

TEST_F(ModelDocument, WithoutAnElementIsRefused) {
    const std::string missing = " is missing or damaged";
    EXPECT_EQ(LoadFailure("<Section/>"), "no whole model: the element Section/Model" + missing);
    EXPECT_EQ(FailureWith("<Facets>4</Facets>", ""),
              "no whole model: the element Section/Model/Layers/Layer/Facets" + missing);
    EXPECT_THAT(FailureWith("<Facets>3</Facets>", "<Facets>many</Facets>"),
                EndsWith("Section/Model/Layers/Layer/Facets" + missing));
    EXPECT_THAT(FailureWith("<Rg>0 4</Rg>", ""), EndsWith("Section/Model/Bounds/Z/Rg" + missing));
    EXPECT_THAT(LoadFailure("<Section><Version>4</Version><Model><File>a</File></Model></Section>"),
                EndsWith("Section/Model/Bounds" + missing));
}

TEST_F(ModelDocument, WithoutLayersIsRefused) {
    StoreModel(Tetrahedron(), m_path);
    std::string content = test::Content(m_path);
    const std::size_t begin = content.find("<Layer>");
    content.erase(begin, content.find("</Layers>") - begin);
    EXPECT_THAT(LoadFailure(content), EndsWith("Section/Model/Layers/Layer is missing or damaged"));
}

TEST_F(ModelDocument, WithADamagedFigureIsRefused) {
    const std::string layers = "Section/Model/Layers/";
    const std::string layer = layers + "Layer/";
    const struct {
        std::string old, replacement, where;
    } cases[] = {
        {"<Side>3</Side>", "", "Section/Model/Facings/Side"},
        {"<Step>2</Step>", "<Step>0</Step>", layers + "Step"},
        {"<Step>2</Step>", "", layers + "Step"},
        {"<Knots>3</Knots>", "<Knots>4</Knots>", layers + "Knots"},
        {"<LongestCover>0 1<", "<LongestCover>1 0<", layers + "LongestCover"},
        {"<LongestCover>0 1<", "<LongestCover>0 2<", layers + "LongestCover"},
        {"<State>2</State>", "", layer + "Facing/State"},
        {"<State>2</State>", "<State>3</State>", layer + "Facing/State"},
        {"<Rg>3.14159 0.463648<", "<Rg>4 0<", layer + "Facing/Rg"},
        {"<Rg>3.14159 0.463648</Rg>", "", layer + "Facing/Rg"},
        {"<Loops>1</Loops>", "", layer + "Contours/Loops"},
        {"<Length>3.92705<", "<Length>-1<", layer + "Contours/Length"},
        {"<Run>0 0 0 3</Run>", "", layer + "Contours/Run"},
        {"<Run>0 0 0 3<", "<Run>0 0 3 3<", layer + "Contours/Run"},
        {"<Run>0 0 0 3<", "<Run>7 0 0 3<", layer + "Contours/Run"},
        {"<ScanLines>64</ScanLines>", "", layers + "ScanLines"},
        {"<ScanLines>64<", "<ScanLines>65<", layers + "ScanLines"},
        {"<Material>18</Material>", "", layer + "Fill/Material"},
        {"<Material>18<", "<Material>-18<", layer + "Fill/Material"},
        {"<Voids>46<", "<Voids>inf<", layer + "Fill/Voids"},
        {"<Carried>1<", "<Carried>1.5<", layer + "Fill/Carried"},
        {"<Carried>1</Carried>", "", layer + "Fill/Carried"},
        {"<Slivers>0</Slivers>", "", layer + "Fill/Slivers"},
        {"<Unpaired>0<", "<Unpaired>none<", layer + "Fill/Unpaired"},
        {"<Reached>1<", "<Reached>2<", layer + "Reach/Reached"},
        {"<Free>6.28319</Free>", "", layer + "Reach/Free"},
        {"<State>0</State>", "", layer + "Reach/Hardest/State"},
        {"<Rg>3.14159 3.14159<", "<Rg>5 3.14159<", layer + "Reach/Hardest/Rg"},
    };
    for (const auto& [old, replacement, where] : cases) {
        EXPECT_THAT(FailureWith(old, replacement),
                    EndsWith("the element " + where + " is missing or damaged"))
            << old << " " << replacement;
    }
}

TEST_F(ModelDocument, WithADamagedMeshIsRefused) {
    const std::string vertices = "Section/Model/Mesh/Vertices",
                      facets = "Section/Model/Mesh/Facets";
    const std::string row = "<Dt>000000000100000002000000";
    const struct {
        std::string old, replacement, where;
    } cases[] = {
        {"<SR>12<", "<SR>11<", vertices + "/BB"},
        {"<SR>12</SR>", "", vertices + "/BB"},
        {"<C>4<", "<C>5<", vertices + "/BB"},
        {"<C>4<", "<C>3<", vertices + "/BB"},
        {"<C>4<", "<C>4294967295<", vertices + "/BB"},
        {"<C>4<", "<C>0<", vertices + "/BB"},
        {"<Bn>1<", "<Bn>0<", vertices + "/BB"},
        {"0000803F0000000000000000", "", vertices + "/BB"},
        {"0000803F", "0000803G", vertices + "/BB"},
        {"0000803F", "0000807F", vertices},
        {row, "<Dt>000000000100000004000000", facets},
        {row, "<Dt>FFFFFFFF0100000002000000", facets},
        {row, "<Dt>", facets + "/BB"},
        {"<Vertices>", "<Vertices/><Others>", vertices + "/BB"},
    };
    for (const auto& [old, replacement, where] : cases) {
        std::string content = Stored();
        content.replace(content.find(old), old.size(), replacement);
        if (replacement.ends_with("<Others>")) {
            content.replace(content.find("</Vertices>"), 11, "</Others>");
        }
        EXPECT_EQ(LoadFailure(content),
                  "no whole model: the element " + where + " is missing or damaged")
            << old << " " << replacement;
    }
}

TEST_F(ModelDocument, KeepsTheBytesOfTheInput) {
    // Above 10000 bytes they wait in a temporary file.
    for (const std::size_t size : {std::size_t{1}, std::size_t{10000}, std::size_t{30000}}) {
        std::string bytes(size, '\0');
        for (std::size_t i = 0; i < size; ++i) {
            bytes[i] = static_cast<char>(i * 7);
        }
        Model model = Tetrahedron();
        model.m_input = Input(Write("a.stl", bytes));
        StoreModel(model, m_path);
        Model loaded = LoadModel(m_path);
        EXPECT_TRUE(loaded.m_input.IsKept());
        EXPECT_EQ(loaded.m_input.Size(), size);
        EXPECT_EQ(FirstDifference(model, loaded), "") << size;

        bytes.back() = static_cast<char>(bytes.back() + 1);
        loaded.m_input = Input(Write("a.stl", bytes));
        EXPECT_EQ(FirstDifference(model, loaded), "bytes of the input") << size;
    }
}

TEST_F(ModelDocument, WithADamagedInputIsRefused) {
    Model model = Tetrahedron();
    model.m_input = Input(Write("a.stl", "seven b"));
    const std::string digits = "736576656E2062";
    const struct {
        std::string old, replacement;
    } cases[] = {
        {"<Dt>" + digits + "</Dt>", ""}, {digits, digits.substr(2)},    {digits, digits + "00"},
        {digits, "73657665zz2062"},      {"<Sz>7<", "<Sz>6<"},          {"<Sz>7</Sz>", ""},
        {"<Size>7<", "<Size>8<"},        {"<Sz>7<", "<Sz>4294967295<"},
    };
    for (const auto& [old, replacement] : cases) {
        StoreModel(model, m_path);
        std::string content = test::Content(m_path);
        ASSERT_NE(content.find(old), content.npos) << old;
        content.replace(content.find(old), old.size(), replacement);
        EXPECT_EQ(LoadFailure(content),
                  "no whole model: the element Section/Model/Input/Bl is missing or damaged")
            << old << " " << replacement;
    }
}

TEST_F(ModelDocument, ComesWithoutAnInputThatWasNotKept) {
    StoreModel(Tetrahedron(), m_path);
    EXPECT_FALSE(LoadModel(m_path).m_input.IsKept());
}

TEST_F(ModelDocument, KeepsEveryStateOfAnArc) {
    // No direction at the bottom, one in the middle, and the seam at the top.
    const auto wall = [](float x, float y, float z) {
        return Facet{Point{0, 0, z}, Point{x, y, z}, Point{0, 0, z + 0.5f}};
    };
    const Mesh mesh{{{Point{0, 0, 0}, Point{1, 0, 0}, Point{0, 1, 0}},
                     wall(1, 0, 1.25f),
                     wall(0.1f, -1, 2.25f),
                     wall(-0.1f, -1, 2.25f)}};
    const Model model("a.stl", mesh, Cut{.m_step = 1.0});
    ASSERT_EQ(model.m_layers.All().size(), 3u);
    EXPECT_TRUE(model.m_layers.All()[0].m_facing.IsEmpty());
    EXPECT_EQ(model.m_layers.All()[1].m_facing.GetDiff(), 0.0);
    EXPECT_TRUE(model.m_layers.All()[2].m_facing.IsSingular());
    StoreModel(model, m_path);
    EXPECT_EQ(FirstDifference(model, LoadModel(m_path)), "");
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
