// A connection that reads lines; TRY leaves the coroutine's happy path short.
#include <coroutine>
#include <exception>
#include <utility>

namespace net {

struct Line {
  const char* text = nullptr;
  ~Line() { text = nullptr; }
};

struct Outcome {
  Line line;
  explicit operator bool() const { return line.text != nullptr; }
  Line& operator*() { return line; }
};

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
  Line buffer;
  bool await_ready() const noexcept { return buffer.text != nullptr; }
  void await_suspend(std::coroutine_handle<>) const noexcept {}
  Outcome await_resume() { return {std::move(buffer)}; }
};

}  // namespace net

#define TRY(expression)                     \
  ({                                        \
    auto outcome = (expression);            \
    if (!outcome) outcome = net::Outcome(); \
    std::move(*outcome);                    \
  })

#include <vector>

namespace net {

struct Connection {
  Line request;
  std::vector<Line> lines;
  Task Serve();
  Task Skip(int count);
};

Task Connection::Skip(int count) {
  while (count-- > 0) {
    auto line = co_await ReadLine{{"skipped"}};
    if (line) lines.push_back(*line);
  }
}

Task Connection::Serve() {
  Line line = TRY(co_await ReadLine{{"GET /"}});
  request = line;
  lines.push_back(line);
}

}  // namespace net

#include <sqlite3.h>

std::size_t Run(net::Connection& connection, sqlite3* base) {
  connection.Serve();
  connection.Skip(sqlite3_changes(base));
  return connection.lines.size();
}
