// A small extension module, which the tests load, use through the chain and unload.

#include <platform/files/CArchive.h>
#include <platform/modules/AfxModuleEntry.h>
#include <platform/modules/CDynLinkLibrary.h>
#include <platform/modules/ModuleResource.h>
#include <platform/object/CException.h>
#include <platform/object/CFileException.h>

namespace {

AFX_EXTENSION_MODULE extension;

// A class that the host knows by name alone.
class TestNail : public CObject {
    DECLARE_SERIAL(TestNail)

    void Serialize(CArchive& ar) override {
        if (ar.IsStoring())
            ar << m_length;
        else
            ar >> m_length;
    }

private:
    INT m_length = 80;
};
IMPLEMENT_SERIAL(TestNail, CObject, 1)

// An exception whose class the host does not know.
class TestNailException : public CException {
    DECLARE_DYNAMIC(TestNailException)

    BOOL GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext) const override {
        return CopyMessage("The nail is bent.", text, size, helpContext);
    }
};
IMPLEMENT_DYNAMIC(TestNailException, CException)

// Behind the classes, so that the start of the module finds them registered.
const AfxModuleEntry entry(extension);

// What the module finds in itself while it is being loaded.
const DWORD sizeOfGaugeAtStart =
    SizeofResource(extension.hModule, FindResourceA(extension.hModule, "Gauge", "TABLE"));

}  // namespace

extern "C" ZTP_API DWORD SizeOfGaugeAtStart() {
    return sizeOfGaugeAtStart;
}

extern "C" ZTP_API void InitNailModule() {
    new CDynLinkLibrary(extension);
}

extern "C" ZTP_API void RaiseFileException() {
    AfxThrowFileException(CFileException::diskFull, 28, "nail.dat");
}

extern "C" ZTP_API void RaiseOwnException() {
    throw new TestNailException;
}

// Calls `operation` and answers the cause of the file exception that it raises;
// all else passes through.
extern "C" ZTP_API INT CauseRaisedBy(void (*operation)()) {
    try {
        operation();
    } catch (CFileException* exception) {
        const INT cause = exception->m_cause;
        exception->Delete();
        return cause;
    }
    return CFileException::none;
}
