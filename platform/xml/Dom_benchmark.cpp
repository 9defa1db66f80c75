#include <platform/xml/Dom.h>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstddef>
#include <cstdlib>
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

// Freed memory stays in the process, so that every benchmark finds the same state and
// none pays for the page faults that the one before it caused.
const bool g_memoryStays =
    ::mallopt(M_MMAP_THRESHOLD, 1 << 30) == 1 && ::mallopt(M_TRIM_THRESHOLD, 1 << 30) == 1;

// A stored model: many small values, and a block of hexadecimal text now and then.
const std::string& ModelText(std::int64_t records) {
    static std::vector<std::pair<std::int64_t, std::string>> made;
    for (const auto& [count, text] : made) {
        if (count == records) return text;
    }
    std::string text = "<?xml version=\"1.0\"?><Model>";
    for (std::int64_t i = 0; i < records; ++i) {
        const std::string n = std::to_string(i);
        text += "<Tx><St>Label " + n + "</St><Ft><N>Sans</N><Sz>" + n + "</Sz><Co>255 0 " + n +
                "</Co></Ft><Rg>" + n + " 1.5</Rg>";
        if (i % 64 == 0) text += "<Dt>" + std::string(4096, 'A') + "</Dt>";
        text += "</Tx>";
    }
    text += "</Model>";
    return made.emplace_back(records, std::move(text)).second;
}

constexpr std::int64_t kSmall = 4000;
constexpr std::int64_t kLarge = 40000;

void SetBytes(benchmark::State& state, std::string_view text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

// ---- Loading a text.

void LoadText(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    for (auto _ : state) {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        if (!document->loadXML(text)) state.SkipWithError("not loaded");
    }
    SetBytes(state, text);
}
BENCHMARK(LoadText)->Name("Dom_LoadText/ours")->Arg(kSmall)->Arg(kLarge);

#if ZT_PEER_PUGIXML
void LoadText_pugixml(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    for (auto _ : state) {
        pugi::xml_document document;
        if (!document.load_buffer(text.data(), text.size(),
                                  pugi::parse_default | pugi::parse_ws_pcdata_single |
                                      pugi::parse_comments | pugi::parse_pi)) {
            state.SkipWithError("not loaded");
        }
    }
    SetBytes(state, text);
}
BENCHMARK(LoadText_pugixml)->Name("Dom_LoadText/pugixml")->Arg(kSmall)->Arg(kLarge);
#endif

#if ZT_PEER_TINYXML2
void LoadText_tinyxml2(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    for (auto _ : state) {
        tinyxml2::XMLDocument document;
        if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
            state.SkipWithError("not loaded");
        }
    }
    SetBytes(state, text);
}
BENCHMARK(LoadText_tinyxml2)->Name("Dom_LoadText/tinyxml2")->Arg(kSmall)->Arg(kLarge);
#endif

#if ZT_PEER_LIBXML2
void LoadText_libxml2(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    for (auto _ : state) {
        xmlDocPtr document = xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr,
                                           nullptr, XML_PARSE_NOBLANKS | XML_PARSE_HUGE);
        if (document == nullptr) state.SkipWithError("not loaded");
        xmlFreeDoc(document);
    }
    SetBytes(state, text);
}
BENCHMARK(LoadText_libxml2)->Name("Dom_LoadText/libxml2")->Arg(kSmall)->Arg(kLarge);
#endif

// ---- Printing a text.

void PrintText(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    document->loadXML(text);
    for (auto _ : state) benchmark::DoNotOptimize(document->xml());
    SetBytes(state, text);
}
BENCHMARK(PrintText)->Name("Dom_PrintText/ours")->Arg(kSmall)->Arg(kLarge);

#if ZT_PEER_PUGIXML
class StringWriter : public pugi::xml_writer {
public:
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

void PrintText_pugixml(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size());
    for (auto _ : state) {
        StringWriter writer;
        document.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
        benchmark::DoNotOptimize(writer.text);
    }
    SetBytes(state, text);
}
BENCHMARK(PrintText_pugixml)->Name("Dom_PrintText/pugixml")->Arg(kSmall)->Arg(kLarge);
#endif

#if ZT_PEER_TINYXML2
void PrintText_tinyxml2(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    tinyxml2::XMLDocument document;
    document.Parse(text.data(), text.size());
    for (auto _ : state) {
        tinyxml2::XMLPrinter printer(nullptr, true);
        document.Print(&printer);
        benchmark::DoNotOptimize(printer.CStr());
    }
    SetBytes(state, text);
}
BENCHMARK(PrintText_tinyxml2)->Name("Dom_PrintText/tinyxml2")->Arg(kSmall)->Arg(kLarge);
#endif

#if ZT_PEER_LIBXML2
void PrintText_libxml2(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    xmlDocPtr document = xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                       XML_PARSE_NOBLANKS | XML_PARSE_HUGE);
    for (auto _ : state) {
        xmlChar* printed = nullptr;
        int size = 0;
        xmlDocDumpMemory(document, &printed, &size);
        xmlFree(printed);
    }
    xmlFreeDoc(document);
    SetBytes(state, text);
}
BENCHMARK(PrintText_libxml2)->Name("Dom_PrintText/libxml2")->Arg(kSmall)->Arg(kLarge);
#endif

// ---- Building a document of small elements.

void BuildInPlace(benchmark::State& state) {
    for (auto _ : state) {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        const IXMLDOMElementPtr root = document->appendElement("r");
        for (std::int64_t i = 0; i < state.range(0); ++i)
            root->appendElement("Sz")->put_text("123");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BuildInPlace)->Name("Dom_Build/ours")->Arg(100000);

void BuildDetachedThenAppend(benchmark::State& state) {
    for (auto _ : state) {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        const IXMLDOMElementPtr root = document->appendElement("r");
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            const IXMLDOMElementPtr child = document->createElement("Sz");
            root->appendChild(child);
            child->put_text("123");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BuildDetachedThenAppend)->Name("Dom_Build/detached")->Arg(100000);

#if ZT_PEER_PUGIXML
void Build_pugixml(benchmark::State& state) {
    for (auto _ : state) {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("r");
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            root.append_child("Sz").append_child(pugi::node_pcdata).set_value("123");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Build_pugixml)->Name("Dom_Build/pugixml")->Arg(100000);
#endif

#if ZT_PEER_TINYXML2
void Build_tinyxml2(benchmark::State& state) {
    for (auto _ : state) {
        tinyxml2::XMLDocument document;
        tinyxml2::XMLElement* root = document.NewElement("r");
        document.InsertEndChild(root);
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            root->InsertNewChildElement("Sz")->SetText("123");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Build_tinyxml2)->Name("Dom_Build/tinyxml2")->Arg(100000);
#endif

#if ZT_PEER_LIBXML2
void Build_libxml2(benchmark::State& state) {
    const auto* tag = reinterpret_cast<const xmlChar*>("Sz");
    const auto* value = reinterpret_cast<const xmlChar*>("123");
    for (auto _ : state) {
        xmlDocPtr document = xmlNewDoc(nullptr);
        xmlNodePtr root = xmlNewNode(nullptr, tag);
        xmlDocSetRootElement(document, root);
        for (std::int64_t i = 0; i < state.range(0); ++i)
            xmlNewTextChild(root, nullptr, tag, value);
        xmlFreeDoc(document);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Build_libxml2)->Name("Dom_Build/libxml2")->Arg(100000);
#endif

// ---- Reading back: each record's values by tag.

void ReadRecords(benchmark::State& state) {
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    document->loadXML(ModelText(state.range(0)));
    std::string scratch;
    for (auto _ : state) {
        std::size_t sum = 0;
        for (const IXMLDOMNodePtr& record : document->documentElement()->childNodes()) {
            sum += record->selectSingleNode("St")->textView(scratch).size();
            sum += record->selectSingleNode("Rg")->textView(scratch).size();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadRecords)->Name("Dom_ReadRecords/ours")->Arg(kLarge);

#if ZT_PEER_PUGIXML
void ReadRecords_pugixml(benchmark::State& state) {
    const std::string& text = ModelText(state.range(0));
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size());
    for (auto _ : state) {
        std::size_t sum = 0;
        for (const pugi::xml_node record : document.document_element().children()) {
            sum += std::string_view(record.child("St").text().get()).size();
            sum += std::string_view(record.child("Rg").text().get()).size();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadRecords_pugixml)->Name("Dom_ReadRecords/pugixml")->Arg(kLarge);
#endif

// ---- Look-up among many children, at n and 4n: the time per child must stay the same.

IXMLDOMDocumentPtr Wide(std::int64_t count, bool differ) {
    IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    const IXMLDOMElementPtr root = document->appendElement("r");
    for (std::int64_t i = 0; i < count; ++i) {
        root->appendElement(differ ? "t" + std::to_string(i) : "t");
    }
    return document;
}

void ItemOfFreshList(benchmark::State& state) {
    const IXMLDOMDocumentPtr document = Wide(state.range(0), false);
    const IXMLDOMElementPtr root = document->documentElement();
    for (auto _ : state) {
        for (LONG i = 0; i < root->childNodes()->length(); ++i) {
            benchmark::DoNotOptimize(root->childNodes()->item(i));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ItemOfFreshList)->Name("Dom_ItemOfFreshList/ours")->Arg(125000)->Arg(500000);

void ChildByTagAndNumber(benchmark::State& state) {
    const IXMLDOMDocumentPtr document = Wide(state.range(0), false);
    const IXMLDOMElementPtr root = document->documentElement();
    for (auto _ : state) {
        for (int i = 0; i < state.range(0); ++i) {
            benchmark::DoNotOptimize(root->childElement("t", i));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ChildByTagAndNumber)->Name("Dom_ChildByTagAndNumber/ours")->Arg(15000)->Arg(60000);

void ChildByDifferentTags(benchmark::State& state) {
    std::vector<std::string> tags;
    for (std::int64_t i = 0; i < state.range(0); ++i) tags.push_back("t" + std::to_string(i));
    for (auto _ : state) {
        state.PauseTiming();
        const IXMLDOMDocumentPtr document = Wide(state.range(0), true);
        const IXMLDOMElementPtr root = document->documentElement();
        state.ResumeTiming();
        for (const std::string& tag : tags) benchmark::DoNotOptimize(root->selectSingleNode(tag));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ChildByDifferentTags)->Name("Dom_ChildByDifferentTags/ours")->Arg(15000)->Arg(60000);

// ---- Memory of a million small elements, in bytes per element.

#if ZT_PEER_PUGIXML
std::size_t g_bytes = 0;

void* CountedAllocate(std::size_t size) {
    void* block = std::malloc(size + sizeof(std::max_align_t));
    if (block == nullptr) return nullptr;
    *static_cast<std::size_t*>(block) = size;
    g_bytes += size;
    return static_cast<char*>(block) + sizeof(std::max_align_t);
}
void CountedFree(void* data) {
    if (data == nullptr) return;
    char* block = static_cast<char*>(data) - sizeof(std::max_align_t);
    g_bytes -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

// Counts what the parser's library takes for the time of a benchmark.
class CountedMemory {
public:
    CountedMemory() { pugi::set_memory_management_functions(CountedAllocate, CountedFree); }
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;
    ~CountedMemory() { pugi::set_memory_management_functions(m_allocate, m_free); }

private:
    pugi::allocation_function m_allocate = pugi::get_memory_allocation_function();
    pugi::deallocation_function m_free = pugi::get_memory_deallocation_function();
};

constexpr int kMillion = 1000000;

void MemoryOfAMillion(benchmark::State& state) {
    const CountedMemory counted;
    for (auto _ : state) {
        const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
        const IXMLDOMElementPtr root = document->appendElement("r");
        for (int i = 0; i < kMillion; ++i) {
            const IXMLDOMElementPtr child = document->createElement("Sz");
            root->appendChild(child);
            child->put_text("123");
        }
        state.counters["bytes"] = static_cast<double>(g_bytes);
    }
}
BENCHMARK(MemoryOfAMillion)
    ->Name("Dom_MemoryOfAMillion/ours")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

void MemoryOfAMillion_pugixml(benchmark::State& state) {
    const CountedMemory counted;
    for (auto _ : state) {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("r");
        for (int i = 0; i < kMillion; ++i) {
            root.append_child("Sz").append_child(pugi::node_pcdata).set_value("123");
        }
        state.counters["bytes"] = static_cast<double>(g_bytes);
    }
}
BENCHMARK(MemoryOfAMillion_pugixml)
    ->Name("Dom_MemoryOfAMillion/pugixml")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
#endif

}  // namespace
