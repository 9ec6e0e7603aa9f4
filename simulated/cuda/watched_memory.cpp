#include "simulated/cuda/watched_memory.h"

#include "module/video_card/cuda/kernels/kernel_support.h"

#include <cstring>

namespace vexil::module::video_card::kernels {

thread_local LaunchPosition launchPosition;

} // namespace vexil::module::video_card::kernels

namespace vexil::simulated::cuda {

namespace {

thread_local WatchedMemory* watchedByThread = nullptr;

} // namespace

void WatchedMemory::watch(WatchedMemory* memory) { watchedByThread = memory; }

void WatchedMemory::add(const CudaCardSection& card, std::uint64_t cardAddress, std::uint8_t* host,
                        std::uint64_t bytes) {
    const auto place = [&](std::uint64_t address) -> Word* {
        if (address < cardAddress || address - cardAddress + sizeof(Word) > bytes) {
            return nullptr;
        }
        return reinterpret_cast<Word*>(host + (address - cardAddress));
    };
    for (const auto& stuck : card.stuckBits) {
        if (Word* const word = place(stuck.address)) {
            (stuck.value ? faults_[word].stuckHigh : faults_[word].stuckLow) |= Word{1} << stuck.bit;
        }
    }
    for (const auto& flip : card.readFlips) {
        if (Word* const word = place(flip.address)) {
            faults_[word].flippingBits = flip.bits;
            faults_[word].flippingRead = flip.read;
        }
    }
    for (const auto& shorted : card.shortedWords) {
        Word* const from = place(shorted.from);
        Word* const to = place(shorted.to);
        if (from != nullptr && to != nullptr) {
            faults_[from].landsAt = to;
        }
    }
    noteBounds();
}

void WatchedMemory::remove(const std::uint8_t* host, std::uint64_t bytes) {
    faults_.erase(firstFrom(host), firstFrom(host + bytes));
    noteBounds();
}

void WatchedMemory::noteBounds() {
    lowest_ = faults_.empty() ? nullptr : faults_.begin()->first;
    highest_ = faults_.empty() ? nullptr : faults_.rbegin()->first;
}

WatchedMemory::Faults::iterator WatchedMemory::firstFrom(const std::uint8_t* place) {
    return faults_.lower_bound(reinterpret_cast<Word*>(const_cast<std::uint8_t*>(place)));
}

std::vector<WatchedMemory::Faults::iterator> WatchedMemory::faultsIn(const std::uint8_t* first,
                                                                     std::uint64_t bytes) {
    std::vector<Faults::iterator> found;
    const auto end = firstFrom(first + bytes);
    for (auto fault = firstFrom(first); fault != end; ++fault) {
        found.push_back(fault);
    }
    return found;
}

bool WatchedMemory::touches(const std::uint8_t* first, std::uint64_t bytes) const {
    const auto next = faults_.lower_bound(reinterpret_cast<Word*>(const_cast<std::uint8_t*>(first)));
    return next != faults_.end() && reinterpret_cast<const std::uint8_t*>(next->first) < first + bytes;
}

WatchedMemory::Fault* WatchedMemory::find(const Word* word) {
    // Nearly every word is sound: two comparisons have to do for it.
    if (word < lowest_ || word > highest_) {
        return nullptr;
    }
    const auto found = faults_.find(const_cast<Word*>(word));
    return found == faults_.end() ? nullptr : &found->second;
}

Word WatchedMemory::forced(const Fault& fault, Word value) {
    return (value | fault.stuckHigh) & ~fault.stuckLow;
}

Word WatchedMemory::load(const Word* word) {
    Fault* const fault = find(word);
    if (fault == nullptr) {
        return *word;
    }
    if (++fault->reads == fault->flippingRead) {
        *const_cast<Word*>(word) ^= fault->flippingBits;
    }
    return forced(*fault, *word);
}

void WatchedMemory::store(Word* word, Word value) {
    const Fault* const fault = find(word);
    *(fault != nullptr && fault->landsAt != nullptr ? fault->landsAt : word) = value;
}

void WatchedMemory::copyIn(std::uint8_t* to, const void* from, std::size_t bytes) {
    std::vector<std::pair<Word*, Word>> before;
    for (const auto& fault : faultsIn(to, bytes)) {
        before.emplace_back(fault->first, *fault->first);
    }
    std::memcpy(to, from, bytes);
    for (const auto& [word, old] : before) {
        const Word written = *word;
        *word = old;
        store(word, written);
    }
}

void WatchedMemory::copyOut(void* to, const std::uint8_t* from, std::size_t bytes) {
    std::memcpy(to, from, bytes);
    for (const auto& fault : faultsIn(from, bytes)) {
        const auto offset =
            static_cast<std::size_t>(reinterpret_cast<const std::uint8_t*>(fault->first) - from);
        if (offset + sizeof(Word) <= bytes) {
            const Word value = load(fault->first);
            std::memcpy(static_cast<std::uint8_t*>(to) + offset, &value, sizeof value);
        }
    }
}

} // namespace vexil::simulated::cuda

namespace vexil::module::video_card::kernels {

using simulated::cuda::watchedByThread;

Word watchedLoad(const AliasedWord* word) {
    return watchedByThread->load(reinterpret_cast<const Word*>(word));
}

void watchedStore(AliasedWord* word, Word value) {
    watchedByThread->store(reinterpret_cast<Word*>(word), value);
}

} // namespace vexil::module::video_card::kernels
