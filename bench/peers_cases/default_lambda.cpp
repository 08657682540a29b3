// A pool of workers; what a worker starts with is worked out in a default argument.
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace pool {

struct Worker {
  explicit Worker(std::string name) : name(std::move(name)) {}
  std::string name;
  std::atomic<std::uint64_t> done{0};
};

class Pool {
 public:
  Worker& Add(const std::string& name) {
    workers_.push_back(std::make_unique<Worker>(name));
    return *workers_.back();
  }

  std::uint64_t Done() const {
    std::uint64_t sum = 0;
    for (const auto& worker : workers_) sum += worker->done;
    return sum;
  }

 private:
  std::vector<std::unique_ptr<Worker>> workers_;
};

template <typename Number>
void Start(Pool& pool, Number count = [](Number most = [] { return Number(4); }()) {
  return std::min(most, Number(16));
}()) {
  for (Number i = 0; i < count; ++i) pool.Add("worker " + std::to_string(i)).done = i;
}

}  // namespace pool

#include <zlib.h>

int main() {
  pool::Pool pool;
  pool::Start<int>(pool);
  pool::Start<unsigned long>(pool, zlibCompileFlags() & 3);
  return pool.Done() > 0 ? 0 : 1;
}
