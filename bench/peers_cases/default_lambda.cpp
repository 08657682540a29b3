// A pool of workers; what a worker starts with is worked out in a default argument.
#include <atomic>
#include <cstdint>
#include <utility>

namespace pool {

struct Worker {
  std::atomic<std::uint64_t> done{0};
  int number = 0;
};

class Pool {
 public:
  Worker& Add(int number) {
    Worker& worker = workers_[size_++ % most];
    worker.number = std::exchange(last_, number);
    return worker;
  }

  std::uint64_t Done() const {
    std::uint64_t sum = 0;
    for (const Worker& worker : workers_) sum += worker.done;
    return sum;
  }

 private:
  static constexpr int most = 16;
  Worker workers_[most];
  int size_ = 0;
  int last_ = 0;
};

template <typename Number>
void Start(Pool& pool, Number count = [](Number most = [] { return Number(4); }()) {
  return most < Number(16) ? most : Number(16);
}()) {
  for (Number i = 0; i < count; ++i) pool.Add(static_cast<int>(i)).done = i;
}

}  // namespace pool

#include <zlib.h>

int main() {
  pool::Pool pool;
  pool::Start<int>(pool);
  pool::Start<unsigned long>(pool, zlibCompileFlags() & 3);
  return pool.Done() > 0 ? 0 : 1;
}
