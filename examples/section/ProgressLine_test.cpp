#include "section/ProgressLine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace section {
namespace {

std::string Told(ProgressLine::EKind kind) {
    std::ostringstream out;
    {
        ProgressLine line(out, kind);
        line.Stage("reading a.stl");
        line.Advance(1, 1000);
        line.Advance(500, 1000);
        line.Advance(501, 1000);
        line.Stage("storing");
    }
    return out.str();
}

TEST(ProgressLine, IsWrittenOverOnATerminalAndGoneAtTheEnd) {
    EXPECT_EQ(Told(ProgressLine::eTerminal),
              "\r\x1b[Ksection: reading a.stl"
              "\r\x1b[Ksection: reading a.stl, 50 %"
              "\r\x1b[Ksection: storing"
              "\r\x1b[K");
}

TEST(ProgressLine, IsALineForEachStageElsewhere) {
    EXPECT_EQ(Told(ProgressLine::ePlain), "section: reading a.stl\nsection: storing\n");
}

TEST(ProgressLine, CanBeSilent) {
    EXPECT_EQ(Told(ProgressLine::eSilent), "");
}

}  // namespace
}  // namespace section
