#include <gtest/gtest.h>
#include <platform/base/DebugOutput.h>

#include <string>

namespace {

std::string g_seen;

void Remember(const char* text) {
    g_seen += text;
}

TEST(DebugOutput, GoesToTheStandardErrorOutputWhileNoSinkIsSet) {
    testing::internal::CaptureStderr();
    OutputDebugStringA("one line\n");
    OutputDebugStringA(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one line\n");
}

TEST(DebugOutput, GoesToTheSinkAsItStands) {
    g_seen.clear();
    testing::internal::CaptureStderr();
    EXPECT_EQ(SetDebugOutputSink(Remember), nullptr);
    OutputDebugStringA("100% ");
    OutputDebugStringA("");
    OutputDebugStringA(nullptr);
    OutputDebugStringA("done\n");
    EXPECT_EQ(SetDebugOutputSink(nullptr), &Remember);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(g_seen, "100% done\n");
}

}  // namespace
