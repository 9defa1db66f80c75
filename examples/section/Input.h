/// @file
/// The file that a mesh was read from, as bytes.

#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include <zt/memory/BlobCached.h>

namespace section {

/// The bytes of the file that a mesh was read from, to go along with the model, or only their
/// number. Large ones stay in a temporary file while nobody asks for them. Copies share them.
class Input {
public:
    /// The most bytes that are kept: a document takes two characters for each.
    static constexpr std::uint64_t kMost = std::uint64_t{64} << 20;

    /// No bytes.
    Input() = default;

    /// The bytes of the file at `path`, or only their number if they are more than `kMost`.
    /// Throws `Failure` if they cannot be read, or not be put into the temporary file.
    explicit Input(const std::filesystem::path& path);

    bool IsKept() const { return m_blob != nullptr; }

    /// Number of bytes in the file; 0 if that isn't known.
    std::uint64_t Size() const { return m_size; }

    /// Equal sizes, and the same bytes or none on both sides. Reads temporary files.
    bool operator==(const Input& other) const;

    /// An element "Input" with the size and, if they are kept, the bytes.
    void PersistXML(ZT::PCExBase& pc);

private:
    void Load(ZT::PCExBase& pc);

    std::uint64_t m_size = 0;
    std::shared_ptr<ZT::BlobCached> m_blob;
};

}  // namespace section
