#include <platform/text/CString.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

namespace {

// The same work on either string; the differences in names are ironed out here.
void AppendByte(CString& text, char c) {
    text.AppendChar(c);
}
void AppendByte(std::string& text, char c) {
    text.push_back(c);
}

int FindText(const CString& text, const char* sought) {
    return text.Find(sought);
}
int FindText(const std::string& text, const char* sought) {
    return static_cast<int>(text.find(sought));
}

CString Part(const CString& text, int first, int count) {
    return text.Mid(first, count);
}
std::string Part(const std::string& text, int first, int count) {
    return text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
}

void Write(CString& text, unsigned number) {
    text.Format("%s_ztuid%u", "name", number);
}
void Write(std::string& text, unsigned number) {
    char buffer[64];
    const int length = std::snprintf(buffer, sizeof buffer, "%s_ztuid%u", "name", number);
    text.assign(buffer, static_cast<std::size_t>(length));
}

/// Makes, copies and compares a text of the given length.
template <class String>
void MakeCopyCompareBy(benchmark::State& state) {
    const std::string source(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        String text(source.c_str());
        String copy(text);
        benchmark::DoNotOptimize(copy);
        benchmark::DoNotOptimize(copy == text);
    }
}

/// Appends single bytes, then reads each by its index.
template <class String>
void AppendAndIndexBy(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        String text;
        for (int i = 0; i < count; ++i) AppendByte(text, static_cast<char>('a' + i % 26));
        int sum = 0;
        for (int i = 0; i < count; ++i) sum += text[static_cast<unsigned>(i)];
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/// Finds a text near the end and takes the part around it.
template <class String>
void FindAndPartBy(benchmark::State& state) {
    String text;
    for (int i = 0; i < state.range(0); ++i) AppendByte(text, static_cast<char>('a' + i % 26));
    text += "needle";
    for (auto _ : state) {
        const int place = FindText(text, "needle");
        String part = Part(text, place, 6);
        benchmark::DoNotOptimize(part);
    }
}

/// Formats a name and a number.
template <class String>
void FormatBy(benchmark::State& state) {
    String text;
    unsigned number = 0;
    for (auto _ : state) {
        Write(text, ++number);
        benchmark::DoNotOptimize(text);
    }
}

void MakeCopyCompare(benchmark::State& state) {
    MakeCopyCompareBy<CString>(state);
}
void MakeCopyCompare_StdString(benchmark::State& state) {
    MakeCopyCompareBy<std::string>(state);
}
void AppendAndIndex(benchmark::State& state) {
    AppendAndIndexBy<CString>(state);
}
void AppendAndIndex_StdString(benchmark::State& state) {
    AppendAndIndexBy<std::string>(state);
}
void FindAndPart(benchmark::State& state) {
    FindAndPartBy<CString>(state);
}
void FindAndPart_StdString(benchmark::State& state) {
    FindAndPartBy<std::string>(state);
}
void Format(benchmark::State& state) {
    FormatBy<CString>(state);
}
void Format_StdString(benchmark::State& state) {
    FormatBy<std::string>(state);
}

BENCHMARK(MakeCopyCompare)->Name("CString_MakeCopyCompare/ours")->Arg(8)->Arg(200);
BENCHMARK(MakeCopyCompare_StdString)->Name("CString_MakeCopyCompare/std")->Arg(8)->Arg(200);
BENCHMARK(AppendAndIndex)->Name("CString_AppendAndIndex/ours")->Arg(1000);
BENCHMARK(AppendAndIndex_StdString)->Name("CString_AppendAndIndex/std")->Arg(1000);
BENCHMARK(FindAndPart)->Name("CString_FindAndPart/ours")->Arg(1000);
BENCHMARK(FindAndPart_StdString)->Name("CString_FindAndPart/std")->Arg(1000);
BENCHMARK(Format)->Name("CString_Format/ours");
BENCHMARK(Format_StdString)->Name("CString_Format/std");

}  // namespace
