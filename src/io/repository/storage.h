#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "io/streams/stream.h"

namespace xIo::xRepository {

// Where a resource has its bytes.
class eStorage {
public:
    std::int32_t size = 0;           // bytes of the content
    std::unique_ptr<eStorage> next;  // the following part of a multi-part resource

    eStorage() = default;
    // Frees the parts behind one after another, so that a long chain needs no deep stack.
    virtual ~eStorage();
    eStorage(const eStorage&) = delete;
    eStorage& operator=(const eStorage&) = delete;

    // An empty storage of the same kind; null where there is no such thing.
    virtual std::unique_ptr<eStorage> Clone() const { return std::make_unique<eStorage>(); }
    // The real path of a loose file; of a plain storage the text itself.
    virtual std::string ResolvePath(const std::string& text) const { return text; }
    virtual bool IsSame(const eStorage&) const { return false; }
    // Takes over the size and a clone of the following parts.
    virtual void Assign(const eStorage& other);
    virtual std::string Description() const { return {}; }
    // A new stream on this part alone; null if it can't be opened.
    virtual std::unique_ptr<eStream> Open(std::uint32_t /*flags*/) { return nullptr; }
};

// A loose file.
class eFileStorage : public eStorage {
public:
    std::string path;  // on disk

    std::unique_ptr<eStorage> Clone() const override { return std::make_unique<eFileStorage>(); }
    std::string ResolvePath(const std::string&) const override { return path; }
    bool IsSame(const eStorage& other) const override;
    void Assign(const eStorage& other) override;
    std::string Description() const override { return path; }
    // flags as of eFileStream::Open. To write, the folders of the path are made first.
    std::unique_ptr<eStream> Open(std::uint32_t flags) override;
};

}  // namespace xIo::xRepository
