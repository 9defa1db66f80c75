#include <gtest/gtest.h>
#include <platform/com/Guid.h>
#include <zt/modules/ModuleIds.h>

#include <string>
#include <type_traits>

namespace ZT {
namespace {

struct Row {
    const char* name;
    const _GUID& id;
    const char* text;
};

const Row kRows[] = {
    {"DMID_MESA", DMID_MESA, "{C387816D-B96A-4328-B686-5D7D6FE1FB5D}"},
    {"DMID_BUTTE", DMID_BUTTE, "{11DC75DD-CA57-414E-8F97-4B81C1DD5A62}"},
    {"DMID_FJORD", DMID_FJORD, "{10C2E021-97D6-4C76-8A9E-2585AFF77CCB}"},
    {"DMID_BROOK", DMID_BROOK, "{5BFA63B2-72CD-468A-A542-B505A4427718}"},
    {"DMID_DELTA", DMID_DELTA, "{A623FC03-4C73-4AE5-87D6-4A2E441175BC}"},
    {"DMID_MOOR", DMID_MOOR, "{80507B81-84EA-4E86-96E1-9BCE3497760B}"},
    {"DMID_TARN", DMID_TARN, "{E8A4C314-A659-4CAB-9F73-8FD6CB8E31AE}"},
    {"DMID_GLADE", DMID_GLADE, "{3058A36D-1789-4F7F-A41A-2A45D41BA831}"},
    {"DMID_ORBIT", DMID_ORBIT, "{ED511606-0183-4B0B-AAAD-D76294D172B4}"},
    {"DMID_RIDGE", DMID_RIDGE, "{A463B379-6F0F-4F66-88A0-8D0930683631}"},
    {"DMID_SUMMIT", DMID_SUMMIT, "{27442C74-3984-4930-932F-21C1E1387FD5}"},
    {"DMID_ZT", DMID_ZT, "{185F4FBA-D005-4649-BA56-907FC6A044D0}"},
    {"DMID_DUNE", DMID_DUNE, "{43144D39-B23F-4468-965C-842A0C1A8D4F}"},
    {"DMID_CANVAS", DMID_CANVAS, "{7CA93826-7F24-4D51-9F77-FF8C33416845}"},
    {"DMID_VISTA", DMID_VISTA, "{7FEB9361-04CC-4233-9634-9684D90B686D}"},
};

std::string Text(const _GUID& id) {
    OLECHAR wide[kGuidTextSize];
    EXPECT_EQ(StringFromGUID2(id, wide, kGuidTextSize), kGuidTextSize);
    return std::string(wide, wide + kGuidTextSize - 1);
}

TEST(ModuleIds, HaveTheirValues) {
    for (const Row& row : kRows) EXPECT_EQ(Text(row.id), row.text) << row.name;
    EXPECT_EQ(std::size(kRows), 15u);
}

TEST(ModuleIds, CanBeCarriedByAQuery) {
    static_assert(std::is_same_v<decltype(&DMID_ZT), _GUID*>);
}

}  // namespace
}  // namespace ZT
