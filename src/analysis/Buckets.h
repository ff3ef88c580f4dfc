#pragma once

#include <deque>
#include <string_view>
#include <unordered_map>

namespace korvantis {

/// The buckets into which the processes of one tick are sorted, in the order in which the first of
/// each stands in the tick's list, so that buckets that tie in every respect stand in a settled
/// order as well. A `Bucket` has a `key()`, a text inside of itself. One thread.
template <typename Bucket>
class Buckets {
 public:
  Buckets() = default;
  Buckets(const Buckets&) = delete;
  Buckets& operator=(const Buckets&) = delete;

  /// The bucket under `key`; `make` makes one with that key if there is none yet.
  template <typename Make>
  Bucket& at(std::string_view key, const Make& make) {
    const auto found = bucketByKey.find(key);
    if (found != bucketByKey.end()) return *found->second;
    Bucket& bucket = list.emplace_back(make());
    bucketByKey.emplace(bucket.key(), &bucket);
    return bucket;
  }

  /// All of them.
  const std::deque<Bucket>& all() const { return list; }

 private:
  /// Never moves what stands in it: the keys below lie there.
  std::deque<Bucket> list;
  std::unordered_map<std::string_view, Bucket*> bucketByKey;
};

}  // namespace korvantis
