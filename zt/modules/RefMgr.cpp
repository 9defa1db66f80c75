#include <zt/modules/RefMgr.h>

#include <zt/interfaces/IQueryClient.h>

#include <algorithm>

namespace ZT {

RefMgr::RefMgr() = default;

RefMgr::~RefMgr() = default;

void RefMgr::AddClient(IQueryClient* c) {
    if (Find(c) < 0) Add(c);
}

int RefMgr::Find(IQueryClient* c) const {
    const auto* const found = std::find(begin(), end(), static_cast<void*>(c));
    return found == end() ? -1 : static_cast<int>(found - begin());
}

bool RefMgr::RemoveClient(IQueryClient* c) {
    const int index = Find(c);
    if (index < 0) return false;
    RemoveAt(index);
    return true;
}

void RefMgr::OnFinalRelease(void* a, void* b) {
    for (INT_PTR i = 0; i < GetSize(); ++i) {
        if (auto* const client = static_cast<IQueryClient*>(GetAt(i))) client->OnFinalRelease(a, b);
    }
}

}  // namespace ZT
