// A list that one thread appends to while others read what it has, without waiting for each other.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>

// What was appended stays where it is. Holds up to Blocks * BlockSize items and takes memory block
// by block.
template <class Item, std::size_t BlockSize, std::size_t Blocks>
class GrowingList {
public:
    static constexpr std::size_t most = BlockSize * Blocks;

    // For the one thread that writes. False when the list is full.
    bool append(const Item& item)
    {
        const std::size_t place = count.load(std::memory_order_relaxed);
        if (place == most) {
            return false;
        }
        std::unique_ptr<Item[]>& block = blocks[place / BlockSize];
        if (block == nullptr) {
            block = std::make_unique_for_overwrite<Item[]>(BlockSize);
        }
        block[place % BlockSize] = item;
        count.store(place + 1, std::memory_order_release);
        return true;
    }

    // For any thread: all items below the size that it was told can be read.
    std::size_t size() const { return count.load(std::memory_order_acquire); }
    const Item& operator[](std::size_t place) const
    {
        return blocks[place / BlockSize][place % BlockSize];
    }

private:
    std::array<std::unique_ptr<Item[]>, Blocks> blocks;
    std::atomic<std::size_t> count = 0;
};
