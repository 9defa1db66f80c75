// The claims on an open file are locks on bytes far behind the end of any file,
// one range of bytes a claim. The locks belong to the open file and not to the
// process, so they go when it is closed, hold within one process too, and
// leave the content alone.

#include <fcntl.h>

#include <platform/files/CFile.h>
#include <platform/files/detail/FileSharing.h>

#include <atomic>
#include <cerrno>

#include <unistd.h>

namespace {

enum Claim { reads, writes, deniesReading, deniesWriting };

constexpr off_t bytesPerClaim = off_t{1} << 48;
constexpr int slotsPerProcess = 1 << 20;

off_t FirstByte(Claim claim) {
    return static_cast<off_t>(firstClaimByte) + claim * bytesPerClaim;
}

struct flock Lock(short type, off_t from, off_t count) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = from;
    lock.l_len = count;
    return lock;
}

// A byte of the claim's range that no other open file uses, for descriptors
// that cannot hold a shared lock.
off_t OwnByte(Claim claim) {
    static std::atomic<int> opened = 0;
    const int slot = opened.fetch_add(1, std::memory_order_relaxed) % slotsPerProcess;
    return FirstByte(claim) + 1 + off_t{getpid()} * slotsPerProcess + slot;
}

bool OnlyWrites(UINT openFlags) {
    return (openFlags & 3) == CFile::modeWrite;
}

void Make(Claim claim, int descriptor, UINT openFlags) {
    struct flock lock = OnlyWrites(openFlags) ? Lock(F_WRLCK, OwnByte(claim), 1)
                                              : Lock(F_RDLCK, FirstByte(claim), 1);
    fcntl(descriptor, F_OFD_SETLK, &lock);
}

bool IsMadeByAnother(Claim claim, int descriptor) {
    struct flock lock = Lock(F_WRLCK, FirstByte(claim), bytesPerClaim);
    return fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

struct Sharing {
    bool reads, writes, deniesReading, deniesWriting;
};

Sharing SharingOf(UINT openFlags) {
    const UINT access = openFlags & 3;
    const UINT share = openFlags & 0x70;
    const bool exclusive = share == CFile::shareCompat || share == CFile::shareExclusive;
    return {access != CFile::modeWrite, access != CFile::modeRead,
            exclusive || share == CFile::shareDenyRead,
            exclusive || share == CFile::shareDenyWrite};
}

}  // namespace

bool ShareFile(int descriptor, UINT openFlags) {
    const Sharing own = SharingOf(openFlags);
    if (own.reads) Make(reads, descriptor, openFlags);
    if (own.writes) Make(writes, descriptor, openFlags);
    if (own.deniesReading) Make(deniesReading, descriptor, openFlags);
    if (own.deniesWriting) Make(deniesWriting, descriptor, openFlags);
    return !(own.reads && IsMadeByAnother(deniesReading, descriptor)) &&
           !(own.writes && IsMadeByAnother(deniesWriting, descriptor)) &&
           !(own.deniesReading && IsMadeByAnother(reads, descriptor)) &&
           !(own.deniesWriting && IsMadeByAnother(writes, descriptor));
}
