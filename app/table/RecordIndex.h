// Where the records of a table stand: one behind the other, each with its length and its part in the table,
// in two bytes a record. They can only be walked in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace app {

enum class RecordRole : std::uint8_t { Comment, Header, Units, Data, Skipped };

class RecordIndex {
  public:
    std::size_t size() const { return words_.size(); }
    void Reserve(std::size_t records) { words_.reserve(records); }
    void Clear() {
        words_.clear();
        long_.clear();
    }
    void Add(std::size_t length, RecordRole role) {
        const std::size_t kept = length < kLong ? length : kLong;
        words_.push_back(static_cast<std::uint16_t>(kept << kRoleBits | static_cast<unsigned>(role)));
        if (kept == kLong) long_.push_back(length);
    }
    void Append(const RecordIndex& more) {
        words_.insert(words_.end(), more.words_.begin(), more.words_.end());
        long_.insert(long_.end(), more.long_.begin(), more.long_.end());
    }

    class Walk {
      public:
        // `begin` is the first byte of the first record.
        Walk(const RecordIndex& index, std::size_t begin) : index_(index), end_(begin) {}
        // Steps to the next record; false behind the last.
        bool Next() {
            if (at_ == index_.words_.size()) return false;
            const std::uint16_t word = index_.words_[at_++];
            begin_ = end_;
            const std::size_t kept = word >> kRoleBits;
            end_ += kept < kLong ? kept : index_.long_[atLong_++];
            role_ = static_cast<RecordRole>(word & ((1u << kRoleBits) - 1));
            return true;
        }
        std::size_t Begin() const { return begin_; }
        std::size_t End() const { return end_; }
        RecordRole Role() const { return role_; }

      private:
        const RecordIndex& index_;
        std::size_t at_ = 0;
        std::size_t atLong_ = 0;
        std::size_t begin_ = 0;
        std::size_t end_;
        RecordRole role_ = RecordRole::Comment;
    };

  private:
    static constexpr unsigned kRoleBits = 3;
    static constexpr std::size_t kLong = (1u << (16 - kRoleBits)) - 1;  // lengths from here on stand in long_

    std::vector<std::uint16_t> words_;
    std::vector<std::size_t> long_;
};

}  // namespace app
