/// @file
/// Clients that note what they hear, for the tests of notification.

#pragma once

#include <platform/object/CException.h>
#include <zt/interfaces/INotify.h>

#include <functional>
#include <string>
#include <vector>

namespace ZT {

/// What the clients heard and how they were counted, in order: "A" for a message to A,
/// "A null" for the null one, "A +" and "A -" for references.
inline std::vector<std::string> heard;

/// Stands on the stack; its references are counted only.
class NotifyClient final : public INotify {
public:
    explicit NotifyClient(std::string itsName) : name(std::move(itsName)) {}

    HRESULT QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override {
        heard.push_back(name + " +");
        return ++count;
    }
    ULONG Release() override {
        heard.push_back(name + " -");
        onRelease();
        return --count;
    }
    HRESULT Notify(void* message) override {
        heard.push_back(message != nullptr ? name : name + " null");
        last = message;
        onNotify();
        return E_FAIL;
    }

    std::string name;
    ULONG count = 1;
    void* last = nullptr;
    std::function<void()> onNotify = [] {};
    std::function<void()> onRelease = [] {};
};

/// An exception of the platform of which one sees how many there are.
class CountedException final : public CException {
public:
    CountedException() { ++alive; }
    ~CountedException() override { --alive; }

    static inline int alive = 0;
};

}  // namespace ZT
