#include <platform/base/DebugOutput.h>

#include <cstdio>
#include <utility>

namespace {

DebugOutputSink g_sink = nullptr;

}  // namespace

void OutputDebugStringA(const char* text) {
    if (!text) return;
    if (g_sink)
        g_sink(text);
    else
        std::fputs(text, stderr);
}

DebugOutputSink SetDebugOutputSink(DebugOutputSink sink) {
    return std::exchange(g_sink, sink);
}
