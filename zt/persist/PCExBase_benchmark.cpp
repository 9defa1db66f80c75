// Storing and loading through the cursor, against XML libraries used directly.
//
// Everybody does the same work. Storing builds the tree of a document and makes its text;
// loading parses that text and reads every number out of the tree. A document has either
// 20,000 objects "Ob" with one interval "Rg" each, or one element "Dt" with a million
// numbers. pugixml writes and reads its numbers with <charconv>, as the cursor does;
// TinyXML-2 and libxml2 do it with printf and strtod, as is usual with them, and once more
// with <charconv>, to tell the document's share from that of the numbers.

#include <benchmark/benchmark.h>
#include <zt/persist/PCExBase.h>
#include <zt/ranges/RangeR1.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#if ZT_PEER_PUGIXML
#include <pugixml.hpp>
#endif
#if ZT_PEER_TINYXML2
#include <tinyxml2.h>
#endif
#if ZT_PEER_LIBXML2
#include <libxml/parser.h>
#include <libxml/tree.h>
#endif

namespace {

constexpr std::size_t kObjects = 20'000;
constexpr std::size_t kNumbers = 1'000'000;

std::vector<double> RandomNumbers(std::size_t count) {
    std::mt19937_64 random(6);
    std::uniform_real_distribution<double> number(-1000, 1000);
    std::vector<double> numbers(count);
    for (double& n : numbers) n = number(random);
    return numbers;
}

const std::vector<double>& Limits() {
    static const std::vector<double> limits = RandomNumbers(2 * kObjects);
    return limits;
}

const std::vector<double>& Numbers() {
    static const std::vector<double> numbers = RandomNumbers(kNumbers);
    return numbers;
}

/// Numbers by <charconv>.
struct CharConv {
    static char* Write(char* out, double value) {
        return std::to_chars(out, out + 24, value, std::chars_format::general, 6).ptr;
    }
    static const char* Read(const char* text, const char* end, double& value) {
        return std::from_chars(text, end, value).ptr;
    }
};

/// Numbers by printf and strtod.
struct CLibrary {
    static char* Write(char* out, double value) {
        return out + std::snprintf(out, 24, "%g", value);
    }
    static const char* Read(const char* text, const char*, double& value) {
        char* next = nullptr;
        value = std::strtod(text, &next);
        return next;
    }
};

/// The numbers with one blank between two of them.
template <class Form>
void WriteRow(std::string& text, const double* numbers, std::size_t count) {
    text.resize(count * 24);
    char* out = text.data();
    for (std::size_t i = 0; i < count; ++i) {
        if (i != 0) *out++ = ' ';
        out = Form::Write(out, numbers[i]);
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
}

template <class Form>
void ReadRow(std::string_view text, double* numbers, std::size_t count) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < count && at < end; ++i) {
        at = Form::Read(at, end, numbers[i]);
        if (at < end) ++at;
    }
}

void Require(bool condition, const char* what) {
    if (!condition) throw std::runtime_error(what);
}

/// Whether what was loaded is what was stored, to six digits.
void RequireSame(const std::vector<double>& loaded, const std::vector<double>& stored) {
    Require(loaded.size() == stored.size(), "a number is missing");
    char a[24], b[24];
    for (std::size_t i = 0; i < loaded.size(); i += 97) {
        const auto x = std::string_view(a, CharConv::Write(a, loaded[i]));
        const auto y = std::string_view(b, CharConv::Write(b, stored[i]));
        Require(x == y, "a number has changed");
    }
}

/// The cursor.
struct Ours {
    /// A run under the root "Root" of a document of its own.
    struct Run {
        explicit Run(std::int32_t mode) : doc(IXMLDOMDocumentPtr::CreateInstance()) {
            pc.m_mode = mode;
        }
        ZT::PC pc;
        IXMLDOMDocumentPtr doc;
    };

    struct Storing : Run {
        Storing() : Run(1), cursor(&pc, doc) {
            const IXMLDOMElementPtr root = doc->createElement("Root");
            doc->appendChild(root);
            cursor.Push(root);
        }
        void Save(std::string& out) {
            cursor.PopElement(false);
            const CString text = doc->xml();
            out.assign(text.GetString(), static_cast<std::size_t>(text.GetLength()));
        }
        ZT::PCExBase cursor;
    };

    struct Loading : Run {
        explicit Loading(const std::string& text) : Run(0), cursor(&pc, doc) {
            Require(doc->loadXML(text), "the cursor");
            cursor.Push(doc->documentElement());
        }
        ZT::PCExBase cursor;
    };

    static void StoreRanges(std::string& out) {
        Storing run;
        for (std::size_t i = 0; i < kObjects; ++i) {
            ZT::RangeR1 range(Limits()[2 * i], Limits()[2 * i + 1]);
            run.cursor.PersistElement("Ob", true);
            range.PersistXML(run.cursor);
            run.cursor.PopElement(false);
        }
        run.Save(out);
    }

    static void LoadRanges(const std::string& text, std::vector<double>& numbers) {
        Loading run(text);
        numbers.assign(2 * kObjects, 0);
        for (std::size_t i = 0; i < kObjects; ++i) {
            ZT::RangeR1 range;
            run.cursor.m_nChildIndex = static_cast<std::uint16_t>(i);
            if (!run.cursor.PersistElement("Ob", true)) break;
            range.PersistXML(run.cursor);
            run.cursor.PopElement(false);
            numbers[2 * i] = range.m_min;
            numbers[2 * i + 1] = range.m_max;
        }
    }

    static void StoreArray(std::string& out) {
        Storing run;
        run.cursor.PushData("Dt", Numbers().data(), kNumbers);
        run.Save(out);
    }

    static void LoadArray(const std::string& text, std::vector<double>& numbers) {
        Loading run(text);
        numbers.assign(kNumbers, 0);
        run.cursor.PersistData("Dt", numbers.data(), kNumbers, true);
    }
};

#if ZT_PEER_PUGIXML
struct Pugixml {
    struct Writer final : pugi::xml_writer {
        explicit Writer(std::string& out) : text(out) {}
        void write(const void* data, std::size_t size) override {
            text.append(static_cast<const char*>(data), size);
        }
        std::string& text;
    };

    static void Save(const pugi::xml_document& document, std::string& out) {
        out.clear();
        Writer writer(out);
        document.save(writer, "", pugi::format_raw | pugi::format_no_declaration);
    }

    static void StoreRanges(std::string& out) {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("Root");
        std::string row;
        for (std::size_t i = 0; i < kObjects; ++i) {
            WriteRow<CharConv>(row, &Limits()[2 * i], 2);
            root.append_child("Ob").append_child("Rg").text().set(row.c_str());
        }
        Save(document, out);
    }

    static void LoadRanges(const std::string& text, std::vector<double>& numbers) {
        pugi::xml_document document;
        Require(document.load_buffer(text.data(), text.size()), "pugixml");
        numbers.assign(2 * kObjects, 0);
        std::size_t i = 0;
        for (const pugi::xml_node object : document.first_child().children("Ob")) {
            ReadRow<CharConv>(object.child("Rg").text().get(), &numbers[i], 2);
            i += 2;
        }
    }

    static void StoreArray(std::string& out) {
        pugi::xml_document document;
        std::string row;
        WriteRow<CharConv>(row, Numbers().data(), kNumbers);
        document.append_child("Root").append_child("Dt").text().set(row.c_str());
        Save(document, out);
    }

    static void LoadArray(const std::string& text, std::vector<double>& numbers) {
        pugi::xml_document document;
        Require(document.load_buffer(text.data(), text.size()), "pugixml");
        numbers.assign(kNumbers, 0);
        ReadRow<CharConv>(document.first_child().child("Dt").text().get(), numbers.data(),
                          kNumbers);
    }
};
#endif

#if ZT_PEER_TINYXML2
template <class Form>
struct TinyXml2 {
    static void Save(const tinyxml2::XMLDocument& document, std::string& out) {
        tinyxml2::XMLPrinter printer(nullptr, true);
        document.Print(&printer);
        out.assign(printer.CStr(), static_cast<std::size_t>(printer.CStrSize()) - 1);
    }

    static void StoreRanges(std::string& out) {
        tinyxml2::XMLDocument document;
        tinyxml2::XMLElement* const root = document.NewElement("Root");
        document.InsertEndChild(root);
        std::string row;
        for (std::size_t i = 0; i < kObjects; ++i) {
            WriteRow<Form>(row, &Limits()[2 * i], 2);
            root->InsertNewChildElement("Ob")->InsertNewChildElement("Rg")->SetText(row.c_str());
        }
        Save(document, out);
    }

    static void LoadRanges(const std::string& text, std::vector<double>& numbers) {
        tinyxml2::XMLDocument document;
        Require(document.Parse(text.data(), text.size()) == tinyxml2::XML_SUCCESS, "TinyXML-2");
        numbers.assign(2 * kObjects, 0);
        std::size_t i = 0;
        for (auto* object = document.RootElement()->FirstChildElement("Ob"); object;
             object = object->NextSiblingElement("Ob")) {
            ReadRow<Form>(object->FirstChildElement("Rg")->GetText(), &numbers[i], 2);
            i += 2;
        }
    }

    static void StoreArray(std::string& out) {
        tinyxml2::XMLDocument document;
        tinyxml2::XMLElement* const root = document.NewElement("Root");
        document.InsertEndChild(root);
        std::string row;
        WriteRow<Form>(row, Numbers().data(), kNumbers);
        root->InsertNewChildElement("Dt")->SetText(row.c_str());
        Save(document, out);
    }

    static void LoadArray(const std::string& text, std::vector<double>& numbers) {
        tinyxml2::XMLDocument document;
        Require(document.Parse(text.data(), text.size()) == tinyxml2::XML_SUCCESS, "TinyXML-2");
        numbers.assign(kNumbers, 0);
        ReadRow<Form>(document.RootElement()->FirstChildElement("Dt")->GetText(), numbers.data(),
                      kNumbers);
    }
};
#endif

#if ZT_PEER_LIBXML2
template <class Form>
struct LibXml2 {
    static const xmlChar* Text(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

    static void Save(xmlDocPtr document, std::string& out) {
        xmlChar* text = nullptr;
        int size = 0;
        xmlDocDumpMemory(document, &text, &size);
        out.assign(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
        xmlFree(text);
    }

    static xmlDocPtr Parse(const std::string& text) {
        const xmlDocPtr document =
            xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                          XML_PARSE_HUGE | XML_PARSE_NOBLANKS);
        Require(document != nullptr, "libxml2");
        return document;
    }

    static void StoreRanges(std::string& out) {
        const xmlDocPtr document = xmlNewDoc(Text("1.0"));
        const xmlNodePtr root = xmlNewNode(nullptr, Text("Root"));
        xmlDocSetRootElement(document, root);
        std::string row;
        for (std::size_t i = 0; i < kObjects; ++i) {
            WriteRow<Form>(row, &Limits()[2 * i], 2);
            const xmlNodePtr object = xmlNewChild(root, nullptr, Text("Ob"), nullptr);
            xmlNewTextChild(object, nullptr, Text("Rg"), Text(row.c_str()));
        }
        Save(document, out);
        xmlFreeDoc(document);
    }

    static void LoadRanges(const std::string& text, std::vector<double>& numbers) {
        const xmlDocPtr document = Parse(text);
        numbers.assign(2 * kObjects, 0);
        std::size_t i = 0;
        for (xmlNodePtr object = xmlDocGetRootElement(document)->children; object;
             object = object->next) {
            if (!xmlStrEqual(object->name, Text("Ob"))) continue;
            ReadRow<Form>(reinterpret_cast<const char*>(object->children->children->content),
                          &numbers[i], 2);
            i += 2;
        }
        xmlFreeDoc(document);
    }

    static void StoreArray(std::string& out) {
        const xmlDocPtr document = xmlNewDoc(Text("1.0"));
        const xmlNodePtr root = xmlNewNode(nullptr, Text("Root"));
        xmlDocSetRootElement(document, root);
        std::string row;
        WriteRow<Form>(row, Numbers().data(), kNumbers);
        xmlNewTextChild(root, nullptr, Text("Dt"), Text(row.c_str()));
        Save(document, out);
        xmlFreeDoc(document);
    }

    static void LoadArray(const std::string& text, std::vector<double>& numbers) {
        const xmlDocPtr document = Parse(text);
        numbers.assign(kNumbers, 0);
        const xmlNodePtr data = xmlDocGetRootElement(document)->children;
        ReadRow<Form>(reinterpret_cast<const char*>(data->children->content), numbers.data(),
                      kNumbers);
        xmlFreeDoc(document);
    }
};
#endif

template <class Library>
void StoreRanges(benchmark::State& state) {
    std::string text;
    for (auto _ : state) Library::StoreRanges(text);
    std::vector<double> loaded;
    Ours::LoadRanges(text, loaded);
    RequireSame(loaded, Limits());
}

template <class Library>
void LoadRanges(benchmark::State& state) {
    std::string text;
    std::vector<double> loaded;
    Ours::StoreRanges(text);
    for (auto _ : state) Library::LoadRanges(text, loaded);
    RequireSame(loaded, Limits());
}

template <class Library>
void StoreArray(benchmark::State& state) {
    std::string text;
    for (auto _ : state) Library::StoreArray(text);
    std::vector<double> loaded;
    Ours::LoadArray(text, loaded);
    RequireSame(loaded, Numbers());
}

template <class Library>
void LoadArray(benchmark::State& state) {
    std::string text;
    std::vector<double> loaded;
    Ours::StoreArray(text);
    for (auto _ : state) Library::LoadArray(text, loaded);
    RequireSame(loaded, Numbers());
}

/// Loading child by child: twice the children must take twice the time.
void LoadByIndex(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    Ours::Storing stored;
    for (int i = 0; i < count; ++i) stored.cursor.PushInt("V", i);
    std::string text;
    stored.Save(text);
    Ours::Loading run(text);
    for (auto _ : state)
        for (int i = 0; i < count; ++i) {
            run.cursor.m_nChildIndex = static_cast<std::uint16_t>(i);
            double value = -1;
            run.cursor.PersistDouble("V", value);
            Require(value == i, "a wrong child");
        }
    state.SetItemsProcessed(state.iterations() * count);
}

void LoadByName(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) names.push_back("V" + std::to_string(i));
    Ours::Storing stored;
    for (int i = 0; i < count; ++i)
        stored.cursor.PushInt(names[static_cast<std::size_t>(i)].c_str(), i);
    std::string text;
    stored.Save(text);
    Ours::Loading run(text);
    for (auto _ : state)
        for (int i = 0; i < count; ++i) {
            int value = -1;
            run.cursor.PersistInt(names[static_cast<std::size_t>(i)].c_str(), value);
            Require(value == i, "a wrong child");
        }
    state.SetItemsProcessed(state.iterations() * count);
}

template <class Library>
void Register(const std::string& name) {
    const auto add = [&](const char* work, auto* function) {
        benchmark::RegisterBenchmark((work + name).c_str(), function)
            ->Unit(benchmark::kMillisecond);
    };
    add("StoreRanges/", StoreRanges<Library>);
    add("LoadRanges/", LoadRanges<Library>);
    add("StoreArray/", StoreArray<Library>);
    add("LoadArray/", LoadArray<Library>);
}

const bool g_registered = [] {
    Register<Ours>("ours");
#if ZT_PEER_PUGIXML
    Register<Pugixml>("pugixml");
#endif
#if ZT_PEER_TINYXML2
    Register<TinyXml2<CLibrary>>("tinyxml2");
    Register<TinyXml2<CharConv>>("tinyxml2_charconv");
#endif
#if ZT_PEER_LIBXML2
    Register<LibXml2<CLibrary>>("libxml2");
    Register<LibXml2<CharConv>>("libxml2_charconv");
#endif
    return true;
}();

BENCHMARK(LoadByIndex)->Arg(15'000)->Arg(60'000)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadByName)->Arg(15'000)->Arg(60'000)->Arg(240'000)->Unit(benchmark::kMillisecond);

}  // namespace
