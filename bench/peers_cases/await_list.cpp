// Collects what several requests answer.
#include <coroutine>
#include <map>
#include <string>
#include <vector>

// paste: /usr/include/sqlite3.h

namespace web {

struct Job {
  struct promise_type {
    Job get_return_object() { return {}; }
    std::suspend_never initial_suspend() noexcept { return {}; }
    std::suspend_never final_suspend() noexcept { return {}; }
    void return_void() {}
    void unhandled_exception() {}
  };
};

struct Fetch {
  std::string address;
  bool await_ready() { return true; }
  void await_suspend(std::coroutine_handle<>) {}
  std::string await_resume() { return "<" + address + ">"; }
};

class Cache {
 public:
  void Store(const std::string& name, std::vector<std::string> pages) {
    for (auto& page : pages) pages_[name].push_back(std::move(page));
  }
  std::size_t size() const { return pages_.size(); }

 private:
  std::map<std::string, std::vector<std::string>> pages_;
};

Job Refresh(Cache& cache, std::string host) {
  auto index = co_await Fetch{host + "/index"};
  cache.Store("index", {index});
  std::vector<std::string> pages{co_await Fetch{host + "/news"}, co_await Fetch{host + "/about"}};
  cache.Store(host, pages);
}

}  // namespace web

// paste: /usr/include/fmt/core.h

int main() {
  web::Cache cache;
  for (std::string host : {"example.org", "example.net"}) web::Refresh(cache, fmt::format("{}:80", host));
  return cache.size() == 4 ? 0 : 1;
}
