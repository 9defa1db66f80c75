// An extension module that asks for nothing while it is being loaded.

#include <platform/modules/AfxModuleEntry.h>

namespace {

AFX_EXTENSION_MODULE extension;
const AfxModuleEntry entry(extension);

}  // namespace
