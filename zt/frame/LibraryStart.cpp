#include <platform/modules/AFX_EXTENSION_MODULE.h>
#include <platform/modules/CDynLinkLibrary.h>
#include <sibling/Color.h>
#include <zt/frame/LibraryStart.h>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace ZT {

namespace {

constinit AFX_EXTENSION_MODULE extension;
constinit bool joined = false;

// The suite's palette. It lives as long as the library is loaded; nothing reads it.
const PW::Color palette[17] = {
    {0, 0, 0},     {128, 128, 128}, {192, 192, 192}, {255, 255, 255}, {128, 0, 0},   {255, 0, 0},
    {128, 128, 0}, {255, 255, 0},   {0, 128, 0},     {0, 255, 0},     {0, 128, 128}, {0, 255, 255},
    {0, 0, 128},   {0, 0, 255},     {128, 0, 128},   {255, 0, 255},   {255, 165, 0},
};

__attribute__((constructor)) void AttachToProcess() {
    if (AfxInitExtensionModule(extension, AfxModuleFromAddress(&extension))) return;
    // The system gives a library no way to refuse to be loaded.
    std::fputs("ztbr64v5 cannot start: its module record was refused\n", stderr);
    std::abort();
}

__attribute__((destructor)) void DetachFromProcess() {
    AfxTermExtensionModule(extension, false);
}

}  // namespace

void InitBedrockDll() {
    if (joined) return;
    // The chain owns the link. Deliberately joined for good, also without memory for it.
    new (std::nothrow) CDynLinkLibrary(extension, false);
    joined = true;
}

}  // namespace ZT
