// Opaque, validated handles for everything the host hands to plug-ins.
// A handle packs a kind tag, a generation and a slot index, so validating one is
// an array access and a compare: a stale, foreign or wrong-kind handle never matches.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace xpsim {

// One tag per kind of handle, so a window passed where a dataref is expected is caught.
enum class HandleKind : uint8_t {
    DataRef = 1, FlightLoop, Window, HotKey, Menu, Command, Probe, Object,
    Widget, Texture, KeySniffer, DrawCallback, Count
};

template <class T>
class HandleTable {
public:
    explicit HandleTable(HandleKind kind) : kind_(kind) {}

    void* add(T value) {
        uint32_t index;
        if (!free_.empty()) {
            index = free_.back();
            free_.pop_back();
        } else {
            index = count_;
            if ((index & kChunkMask) == 0) chunks_.push_back(std::make_unique<Slot[]>(kChunkSize));
            ++count_;
        }
        Slot& s = slot(index);
        s.value.emplace(std::move(value));
        return encode(index, s.generation);
    }

    // Null when the handle is not a live handle of this table.
    T* get(const void* handle) {
        uint32_t index;
        if (!decode(handle, index)) return nullptr;
        return &*slot(index).value;
    }
    const T* get(const void* handle) const {
        return const_cast<HandleTable*>(this)->get(handle);
    }
    bool contains(const void* handle) const { return get(handle) != nullptr; }

    bool remove(const void* handle) {
        uint32_t index;
        if (!decode(handle, index)) return false;
        Slot& s = slot(index);
        s.value.reset();
        s.generation = (s.generation + 1) & kGenerationMask;
        free_.push_back(index);
        return true;
    }

    // Pointers from get() stay valid until that entry is removed.
    // Visits live entries in slot order; f(handle, value). Entries removed during the
    // visit are skipped; entries added during it may or may not be visited.
    template <class F>
    void forEach(F&& f) {
        for (uint32_t i = 0; i < count_; ++i) {
            Slot& s = slot(i);
            if (!s.value) continue;
            f(encode(i, s.generation), *s.value);
        }
    }

    size_t size() const { return count_ - free_.size(); }
    void clear() {
        for (uint32_t i = 0; i < count_; ++i) {
            if (slot(i).value) remove(encode(i, slot(i).generation));
        }
    }

private:
    static constexpr uint32_t kGenerationMask = 0xFFFFFF;
    // Slots live in fixed chunks: they stay put while plug-ins add more, and finding one
    // is a shift and a mask (a scalar read checks a handle on every call).
    static constexpr uint32_t kChunkShift = 6;
    static constexpr uint32_t kChunkSize = 1u << kChunkShift;
    static constexpr uint32_t kChunkMask = kChunkSize - 1;
    struct Slot {
        std::optional<T> value;
        uint32_t generation = 1;
    };

    void* encode(uint32_t index, uint32_t generation) const {
        uint64_t v = (uint64_t(kind_) << 56) | (uint64_t(generation) << 32) | (uint64_t(index) + 1);
        return reinterpret_cast<void*>(static_cast<uintptr_t>(v));
    }
    bool decode(const void* handle, uint32_t& index) const {
        uint64_t v = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(handle));
        if ((v >> 56) != uint64_t(kind_)) return false;
        uint64_t low = v & 0xFFFFFFFFu;
        if (low == 0 || low > count_) return false;
        index = static_cast<uint32_t>(low - 1);
        const Slot& s = slot(index);
        return s.value && s.generation == ((v >> 32) & kGenerationMask);
    }

    Slot& slot(uint32_t index) const { return chunks_[index >> kChunkShift][index & kChunkMask]; }

    HandleKind kind_;
    uint32_t count_ = 0;  // slots made so far, live or free
    std::vector<std::unique_ptr<Slot[]>> chunks_;
    std::vector<uint32_t> free_;
};

}  // namespace xpsim
