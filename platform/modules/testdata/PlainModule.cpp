// A module that tells the platform nothing of itself.

#include <platform/base/Export.h>

extern "C" ZTP_API int PlainAnswer() {
    return 42;
}
