#include "rig/block_text.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace veloran {

void BlockText::append(std::string_view bytes) {
    while (!bytes.empty()) {
        if (blocks_.empty() || blocks_.back().end == blocks_.back().capacity) {
            constexpr std::size_t kFirst = 256;
            const auto capacity = std::clamp(size_, kFirst, kBlock);
            blocks_.push_back({std::make_unique_for_overwrite<char[]>(capacity),
                               static_cast<std::uint32_t>(capacity), 0, 0});
        }
        auto& last = blocks_.back();
        const auto count = std::min<std::size_t>(bytes.size(), last.capacity - last.end);
        std::memcpy(last.bytes.get() + last.end, bytes.data(), count);
        last.end += static_cast<std::uint32_t>(count);
        size_ += count;
        bytes.remove_prefix(count);
    }
}

void BlockText::append(BlockText other) {
    std::ranges::move(other.blocks_, std::back_inserter(blocks_));
    size_ += other.size_;
}

void BlockText::cut(std::size_t begin, std::size_t end) {
    std::size_t at = 0;  // of the block in the whole
    for (auto& block : blocks_) {
        const auto within = [&](std::size_t place) {
            const auto inBlock = std::clamp(place, at, at + block.text().size()) - at;
            return block.begin + static_cast<std::uint32_t>(inBlock);
        };
        const auto size = block.text().size();
        const auto from = within(begin);
        block.end = std::max(from, within(end));
        block.begin = from;
        at += size;
    }
    size_ = begin < end ? std::min(end, at) - std::min(begin, at) : 0;
}

bool BlockText::startsWith(std::string_view bytes) const {
    for (const auto& block : blocks_) {
        const auto text = block.text();
        const auto count = std::min(bytes.size(), text.size());
        if (text.substr(0, count) != bytes.substr(0, count)) return false;
        bytes.remove_prefix(count);
        if (bytes.empty()) return true;
    }
    return bytes.empty();
}

std::string BlockText::text() const {
    std::string whole;
    whole.reserve(size_);
    for (const auto& block : blocks_) whole += block.text();
    return whole;
}

void BlockText::release(std::size_t bytes) {
    std::size_t released = 0;
    while (!blocks_.empty() && released < bytes) {
        released += blocks_.back().capacity;
        size_ -= blocks_.back().text().size();
        blocks_.pop_back();
    }
}

}  // namespace veloran
