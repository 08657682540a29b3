// A connection that reads lines; TRY leaves the coroutine's happy path short.
#include <coroutine>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace net {

struct Task {
  struct promise_type {
    std::exception_ptr failure;
    Task get_return_object() { return Task{}; }
    std::suspend_never initial_suspend() noexcept { return {}; }
    std::suspend_never final_suspend() noexcept { return {}; }
    void return_void() {}
    void unhandled_exception() { failure = std::current_exception(); }
  };
};

struct ReadLine {
  std::string buffer;
  bool await_ready() const noexcept { return !buffer.empty(); }
  void await_suspend(std::coroutine_handle<>) const noexcept {}
  std::optional<std::string> await_resume() { return std::move(buffer); }
};

}  // namespace net

#define TRY(expression)                     \
  ({                                        \
    auto outcome = (expression);            \
    if (!outcome) outcome = std::string(); \
    std::move(*outcome);                    \
  })

#include <deque>
#include <map>

namespace net {

struct Connection {
  std::map<std::string, std::string> headers;
  std::deque<std::string> lines;
  Task Serve();
  Task Skip(int count);
};

Task Connection::Skip(int count) {
  while (count-- > 0) {
    auto line = co_await ReadLine{"skipped"};
    if (line) lines.push_back(*line);
  }
}

Task Connection::Serve() {
  std::string request = TRY(co_await ReadLine{"GET /"});
  headers["request"] = request;
  lines.push_back(request);
}

}  // namespace net

#include <sqlite3.h>

std::size_t Run(net::Connection& connection, sqlite3* base) {
  connection.Serve();
  connection.Skip(sqlite3_changes(base));
  return connection.lines.size();
}
