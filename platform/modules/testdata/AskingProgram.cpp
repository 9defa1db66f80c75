// A program that runs a command and then looks up a resource of its own for the first time.

#include <platform/base/LastError.h>
#include <platform/modules/ModuleResource.h>

#include <cstdio>
#include <cstdlib>

int main(int count, char** values) {
    if (count != 2 || std::system(values[1]) != 0) return 2;
    const HRSRC place = FindResourceA(nullptr, "Gauge", "TABLE");
    if (!place) {
        std::printf("error %u", unsigned{GetLastError()});
        return 1;
    }
    const void* const bytes = LockResource(LoadResource(nullptr, place));
    std::fwrite(bytes, 1, SizeofResource(nullptr, place), stdout);
    return 0;
}
