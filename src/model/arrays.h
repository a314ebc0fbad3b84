// Arrays that carry their name and index ranges and check every subscript.
#pragma once

#include <cstddef>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "model/run_time_error.h"
#include "model/types.h"

namespace quillane {

/// An inclusive range of subscripts. lower = 1, upper = 0 is the range of an array not yet created.
struct IndexRange {
  int lower = 1;
  int upper = 0;

  bool Contains(int i) const { return i >= lower && i <= upper; }
  std::size_t Size() const { return static_cast<std::size_t>(upper - lower) + 1; }
  std::string Text() const { return std::to_string(lower) + " to " + std::to_string(upper); }
  friend bool operator==(const IndexRange&, const IndexRange&) = default;
};

namespace detail {

/// Throws RunTimeError unless the range can size an array: its upper end is an Integer and not
/// below the lower one.
void CheckRange(const char* name, IndexRange range);
[[noreturn]] void ThrowSubscript(const char* name, int i, IndexRange range);
[[noreturn]] void ThrowSubscript(const char* name, int i, int j, IndexRange first,
                                 IndexRange second);

template <class T>
void Recreate(std::vector<T>& values, std::size_t size, const char* name) {
  try {
    values.assign(size, T{});
  } catch (const std::bad_alloc&) {
    throw RunTimeError(ErrorKind::kOutOfMemory, std::string("no memory for ") + name);
  }
}

}  // namespace detail

/// One-dimensional array of T over an inclusive index range. Empty until ReDim.
template <class T>
class Array1 {
 public:
  explicit Array1(const char* name) : name_(name) {}

  /// Re-creates the array zero-filled; old contents are dropped, the allocation is reused. Throws
  /// RunTimeError and then leaves the array as it is.
  void ReDim(int lower, int upper) {
    const IndexRange range = {lower, upper};
    detail::CheckRange(name_, range);
    detail::Recreate(values_, range.Size(), name_);
    range_ = range;
  }

  /// Returns element i; throws RunTimeError (subscript) outside the range.
  T& operator()(int i) { return values_[Offset(i)]; }
  const T& operator()(int i) const { return values_[Offset(i)]; }

  IndexRange Range() const { return range_; }
  bool operator==(const Array1&) const = default;

  /// Returns the elements in index order, for inner loops after one check of the range.
  std::span<T> Raw() { return values_; }
  std::span<const T> Raw() const { return values_; }

 private:
  std::size_t Offset(int i) const {
    if (!range_.Contains(i)) detail::ThrowSubscript(name_, i, range_);
    return static_cast<std::size_t>(i - range_.lower);
  }

  const char* name_;
  IndexRange range_;
  std::vector<T> values_;
};

/// Two-dimensional array of T over inclusive index ranges, the first index fastest in memory. Empty
/// until ReDim.
template <class T>
class Array2 {
 public:
  explicit Array2(const char* name) : name_(name) {}

  /// Re-creates the array zero-filled; old contents are dropped, the allocation is reused. Throws
  /// RunTimeError and then leaves the array as it is.
  void ReDim(IndexRange first, IndexRange second) {
    detail::CheckRange(name_, first);
    detail::CheckRange(name_, second);
    detail::Recreate(values_, first.Size() * second.Size(), name_);
    first_ = first;
    second_ = second;
    rows_ = first.Size();
    columns_ = second.Size();
  }

  /// Returns element (i, j); throws RunTimeError (subscript) outside the ranges.
  T& operator()(int i, int j) { return values_[Offset(i, j)]; }
  const T& operator()(int i, int j) const { return values_[Offset(i, j)]; }

  IndexRange First() const { return first_; }
  IndexRange Second() const { return second_; }
  const char* Name() const { return name_; }
  bool operator==(const Array2&) const = default;

  /// Returns the elements, first index fastest, for inner loops after one check of the ranges.
  std::span<T> Raw() { return values_; }
  std::span<const T> Raw() const { return values_; }

 private:
  std::size_t Offset(int i, int j) const {
    // Below a range a difference becomes huge, so one comparison suffices in the inner loops.
    const auto row = static_cast<std::size_t>(i - first_.lower);
    const auto column = static_cast<std::size_t>(j - second_.lower);
    if (row >= rows_ || column >= columns_) detail::ThrowSubscript(name_, i, j, first_, second_);
    return row + column * rows_;
  }

  const char* name_;
  IndexRange first_;
  IndexRange second_;
  std::size_t rows_ = 0, columns_ = 0;
  std::vector<T> values_;
};

}  // namespace quillane
