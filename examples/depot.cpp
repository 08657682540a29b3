// A small stock-keeping program: it reads the day's events of a depot (goods
// that arrive, get reserved, get picked, get counted), keeps a ledger of the
// items and prints what is in stock, what has to be ordered and from whom.
//
// It does not compile, and what the compiler says points into the standard
// library.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// ---------------------------------------------------------------------------
// Text helpers
// ---------------------------------------------------------------------------

namespace text {

std::string trim(const std::string& s) {
  const auto is_space = [](unsigned char c) { return std::isspace(c) != 0; };
  const auto first = std::find_if_not(s.begin(), s.end(), is_space);
  const auto last = std::find_if_not(s.rbegin(), s.rend(), is_space).base();
  return first < last ? std::string(first, last) : std::string();
}

std::vector<std::string> split(const std::string& line, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= line.size(); ++i) {
    if (i == line.size() || line[i] == separator) {
      parts.push_back(trim(line.substr(start, i - start)));
      start = i + 1;
    }
  }
  return parts;
}

std::string join(const std::vector<std::string>& parts, const std::string& separator) {
  std::string joined;
  for (const std::string& part : parts) {
    if (!joined.empty()) {
      joined += separator;
    }
    joined += part;
  }
  return joined;
}

long to_number(const std::string& s) {
  std::size_t used = 0;
  long value = 0;
  try {
    value = std::stol(s, &used);
  } catch (const std::logic_error&) {
    used = 0;
  }
  if (used == 0 || used != s.size()) {
    throw std::invalid_argument("not a number: '" + s + "'");
  }
  return value;
}

std::string pad_left(const std::string& s, std::size_t width) {
  return s.size() < width ? std::string(width - s.size(), ' ') + s : s;
}

std::string pad_right(const std::string& s, std::size_t width) {
  return s.size() < width ? s + std::string(width - s.size(), ' ') : s;
}

}  // namespace text

// ---------------------------------------------------------------------------
// Identifiers and money
// ---------------------------------------------------------------------------

// A name that cannot be mixed up with a name of another kind.
template <typename Tag>
class Id {
  std::string name_;

 public:
  Id() = default;
  explicit Id(std::string name) : name_(std::move(name)) {}

  const std::string& name() const { return name_; }

  friend bool operator==(const Id& a, const Id& b) { return a.name_ == b.name_; }
  friend bool operator<(const Id& a, const Id& b) { return a.name_ < b.name_; }
};

struct SkuTag;
struct OrderTag;
struct SupplierTag;

using Sku = Id<SkuTag>;
using OrderId = Id<OrderTag>;
using SupplierId = Id<SupplierTag>;

class Money {
  long cents_ = 0;

 public:
  constexpr Money() = default;
  explicit constexpr Money(long cents) : cents_(cents) {}

  constexpr long cents() const { return cents_; }

  Money& operator+=(Money other) {
    cents_ += other.cents_;
    return *this;
  }

  friend constexpr Money operator*(Money a, long times) { return Money(a.cents_ * times); }
  friend constexpr bool operator<(Money a, Money b) { return a.cents_ < b.cents_; }
};

std::string to_text(Money money) {
  const std::string cents = std::to_string(money.cents() % 100);
  return std::to_string(money.cents() / 100) + (cents.size() < 2 ? ".0" : ".") + cents;
}

// ---------------------------------------------------------------------------
// Queries: arithmetic on the fields of a record, evaluated record by record
// ---------------------------------------------------------------------------

namespace query {

// What every row of a table has. The revision tells a reader whether a row that
// it has seen before has changed since.
class Record {
  int revision_ = 0;

 public:
  int revision() const { return revision_; }
  void touch() { ++revision_; }
};

// An operand is a node of an expression (some class with a call operator), or a
// plain number, which stands for itself.
template <typename T>
inline constexpr bool is_operand_v = std::is_arithmetic_v<T> || std::is_class_v<T>;

template <typename L, typename R>
using enable_for_operands =
    std::enable_if_t<is_operand_v<std::decay_t<L>> && is_operand_v<std::decay_t<R>>>;

template <typename Node, typename Row>
auto evaluate(const Node& node, const Row& row) {
  if constexpr (std::is_arithmetic_v<Node>) {
    return node;
  } else {
    return node(row);
  }
}

template <typename Row, typename Value>
struct Field {
  Value Row::*member;

  Value operator()(const Row& row) const { return row.*member; }
};

template <typename Operation, typename L, typename R>
struct Binary {
  L left;
  R right;

  template <typename Row>
  auto operator()(const Row& row) const {
    return Operation::apply(evaluate(left, row), evaluate(right, row));
  }
};

template <typename Operation, typename L, typename R>
auto combine(L&& left, R&& right) {
  return Binary<Operation, std::decay_t<L>, std::decay_t<R>>{std::forward<L>(left),
                                                             std::forward<R>(right)};
}

struct Minus {
  static long apply(long a, long b) { return a - b; }
};

template <typename L, typename R, typename = enable_for_operands<L, R>>
auto operator-(L&& left, R&& right) {
  return combine<Minus>(std::forward<L>(left), std::forward<R>(right));
}

struct Times {
  static long apply(long a, long b) { return a * b; }
};

template <typename L, typename R, typename = enable_for_operands<L, R>>
auto operator*(L&& left, R&& right) {
  return combine<Times>(std::forward<L>(left), std::forward<R>(right));
}

struct Below {
  static bool apply(long a, long b) { return a < b; }
};

template <typename L, typename R>
auto below(L&& left, R&& right) {
  return combine<Below>(std::forward<L>(left), std::forward<R>(right));
}

template <typename Row, typename Value>
Field<Row, Value> field(Value Row::*member) {
  return {member};
}

// Calls `action` on every row of the table for which the condition holds.
template <typename Row, typename Condition, typename Action>
void for_each_where(const std::vector<Row>& table, const Condition& condition, Action action) {
  for (const Row& row : table) {
    if (evaluate(condition, row)) {
      action(row);
    }
  }
}

template <typename Row, typename Expression>
long total(const std::vector<Row>& table, const Expression& expression) {
  long sum = 0;
  for (const Row& row : table) {
    sum += evaluate(expression, row);
  }
  return sum;
}

}  // namespace query

// ---------------------------------------------------------------------------
// Events
// ---------------------------------------------------------------------------

enum class Kind { arrival, reservation, picking, recount };

struct Event {
  Kind kind = Kind::arrival;
  Sku sku;
  long quantity = 0;
  Money unit_price;
  OrderId order;
};

Event arrival(const std::vector<std::string>& parts) {
  const Money unit_price(text::to_number(parts.at(3)));
  return {Kind::arrival, Sku(parts.at(1)), text::to_number(parts.at(2)), unit_price, OrderId()};
}

Event reservation(const std::vector<std::string>& parts) {
  const OrderId order(parts.at(3));
  return {Kind::reservation, Sku(parts.at(1)), text::to_number(parts.at(2)), Money(), order};
}

Event picking(const std::vector<std::string>& parts) {
  return {Kind::picking, Sku(parts.at(1)), 0, Money(), OrderId(parts.at(2))};
}

Event recount(const std::vector<std::string>& parts) {
  return {Kind::recount, Sku(parts.at(1)), text::to_number(parts.at(2)), Money(), OrderId()};
}

// Reads one event: the kind, the item, and what belongs to the kind, each
// separated from the next by a semicolon.
Event parse_event(const std::string& content) {
  const std::vector<std::string> parts = text::split(content, ';');
  if (parts.front() == "arrival") {
    return arrival(parts);
  }
  if (parts.front() == "reserve") {
    return reservation(parts);
  }
  if (parts.front() == "pick") {
    return picking(parts);
  }
  if (parts.front() == "count") {
    return recount(parts);
  }
  throw std::invalid_argument("unknown kind of event");
}

// Empty lines and remarks give no event.
std::vector<Event> parse_events(const std::vector<std::string>& lines) {
  std::vector<Event> events;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string content = text::trim(lines[i].substr(0, lines[i].find('#')));
    if (content.empty()) {
      continue;
    }
    try {
      events.push_back(parse_event(content));
    } catch (const std::logic_error& error) {
      throw std::runtime_error("line " + std::to_string(i + 1) + ": " + error.what());
    }
  }
  return events;
}

// ---------------------------------------------------------------------------
// The stock
// ---------------------------------------------------------------------------

class StockItem : public query::Record {
 public:
  Sku sku;
  long on_hand = 0;
  long reserved = 0;
  long minimum = 0;
  long lost = 0;
  long last_price = 0;

  StockItem() = default;
  StockItem(Sku sku, long minimum) : sku(std::move(sku)), minimum(minimum) {}

  void receive(long quantity, Money unit_price) {
    if (quantity <= 0) {
      throw std::invalid_argument("an arrival of nothing: " + sku.name());
    }
    on_hand += quantity;
    last_price = unit_price.cents();
    touch();
  }

  void reserve(long quantity) {
    reserved += quantity;
    touch();
  }

  // What was picked is reserved no longer, and it is gone.
  void pick(long quantity) {
    if (quantity > on_hand) {
      throw std::out_of_range("more picked than there is: " + sku.name());
    }
    on_hand -= quantity;
    reserved -= quantity;
    touch();
  }

  void count(long counted) {
    lost += on_hand > counted ? on_hand - counted : 0;
    on_hand = counted;
    touch();
  }
};

// Fields under the names that the reports use.
namespace fields {

const auto on_hand = query::field(&StockItem::on_hand);
const auto reserved = query::field(&StockItem::reserved);
const auto minimum = query::field(&StockItem::minimum);
const auto lost = query::field(&StockItem::lost);
const auto last_price = query::field(&StockItem::last_price);

}  // namespace fields

class Ledger {
  std::vector<StockItem> stock_;
  std::map<OrderId, std::vector<Event>> reservations_;
  int applied_ = 0;

  StockItem& item(const Sku& sku) {
    for (StockItem& item : stock_) {
      if (item.sku == sku) {
        return item;
      }
    }
    throw std::out_of_range("unknown item: " + sku.name());
  }

  void reserve(const Event& event) {
    item(event.sku).reserve(event.quantity);
    reservations_[event.order].push_back(event);
  }

  void pick(const Event& event) {
    std::vector<Event>& open = reservations_[event.order];
    const auto found = std::find_if(open.begin(), open.end(),
                                    [&](const Event& wanted) { return wanted.sku == event.sku; });
    if (found == open.end()) {
      throw std::out_of_range("nothing reserved for " + event.order.name());
    }
    item(event.sku).pick(found->quantity);
    open.erase(found);
  }

 public:
  const std::vector<StockItem>& stock() const { return stock_; }
  int applied() const { return applied_; }

  void introduce(const StockItem& item) { stock_.push_back(item); }

  void apply(const Event& event) {
    switch (event.kind) {
      case Kind::arrival: item(event.sku).receive(event.quantity, event.unit_price); break;
      case Kind::reservation: reserve(event); break;
      case Kind::picking: pick(event); break;
      case Kind::recount: item(event.sku).count(event.quantity); break;
    }
    ++applied_;
  }

  std::size_t open_reservations() const {
    std::size_t sum = 0;
    for (const auto& entry : reservations_) {
      sum += entry.second.size();
    }
    return sum;
  }
};

// ---------------------------------------------------------------------------
// Suppliers and orders
// ---------------------------------------------------------------------------

struct Offer {
  SupplierId supplier;
  Money unit_price;
  long pack_size = 1;
};

class Catalogue {
  std::map<Sku, std::vector<Offer>> offers_;

 public:
  void add(const Sku& sku, const Offer& offer) { offers_[sku].push_back(offer); }

  // The offer with the lowest price, or null when nobody sells the item.
  const Offer* cheapest(const Sku& sku) const {
    const auto found = offers_.find(sku);
    if (found == offers_.end()) {
      return nullptr;
    }
    const Offer* best = nullptr;
    for (const Offer& offer : found->second) {
      if (best == nullptr || offer.unit_price < best->unit_price) {
        best = &offer;
      }
    }
    return best;
  }
};

struct OrderLine {
  Sku sku;
  SupplierId supplier;
  long quantity = 0;
  Money price;
};

// Orders come in whole packs.
constexpr long round_up(long quantity, long pack_size) {
  return (quantity + pack_size - 1) / pack_size * pack_size;
}

class Purchasing {
  const Catalogue& catalogue_;

 public:
  explicit Purchasing(const Catalogue& catalogue) : catalogue_(catalogue) {}

  // Orders what is missing of the items of which, once the reservations are
  // served, less is left than the minimum says.
  std::vector<OrderLine> plan(const Ledger& ledger) const {
    std::vector<OrderLine> lines;
    const auto available = fields::on_hand - fields::reserved;
    const auto is_short = query::below(available, fields::minimum);
    query::for_each_where(ledger.stock(), is_short, [&](const StockItem& item) {
      if (const Offer* offer = catalogue_.cheapest(item.sku)) {
        const long missing = item.minimum - (item.on_hand - item.reserved);
        const long quantity = round_up(missing, offer->pack_size);
        lines.push_back({item.sku, offer->supplier, quantity, offer->unit_price * quantity});
      }
    });
    std::sort(lines.begin(), lines.end(), [](const OrderLine& a, const OrderLine& b) {
      return a.supplier == b.supplier ? a.sku < b.sku : a.supplier < b.supplier;
    });
    return lines;
  }
};

// ---------------------------------------------------------------------------
// Reports
// ---------------------------------------------------------------------------

// A table of text whose columns are as wide as their widest cell.
class Table {
  std::vector<std::vector<std::string>> rows_;
  std::vector<std::size_t> widths_;

 public:
  void row(const std::vector<std::string>& cells) {
    widths_.resize(std::max(widths_.size(), cells.size()));
    for (std::size_t i = 0; i < cells.size(); ++i) {
      widths_[i] = std::max(widths_[i], cells[i].size() + 2);
    }
    rows_.push_back(cells);
  }

  std::string layout() const {
    std::string lines;
    for (const auto& cells : rows_) {
      for (std::size_t i = 0; i < cells.size(); ++i) {
        lines +=
            i == 0 ? text::pad_right(cells[i], widths_[i]) : text::pad_left(cells[i], widths_[i]);
      }
      lines += '\n';
    }
    return lines;
  }
};

class Report {
 public:
  virtual ~Report() = default;
  virtual std::string title() const = 0;
  virtual std::string body() const = 0;
};

class StockReport : public Report {
  const Ledger& ledger_;

 public:
  explicit StockReport(const Ledger& ledger) : ledger_(ledger) {}

  std::string title() const override { return "Stock"; }

  std::string body() const override {
    Table table;
    table.row({"item", "on hand", "reserved", "revision"});
    for (const StockItem& item : ledger_.stock()) {
      table.row({item.sku.name(), std::to_string(item.on_hand), std::to_string(item.reserved),
                 std::to_string(item.revision())});
    }
    const Money worth(query::total(ledger_.stock(), fields::on_hand * fields::last_price));
    const long lost = query::total(ledger_.stock(), fields::lost);
    return table.layout() + "worth " + to_text(worth) + ", lost " + std::to_string(lost) +
           " pieces\n";
  }
};

class OrderReport : public Report {
  const Ledger& ledger_;
  const Purchasing& purchasing_;

 public:
  OrderReport(const Ledger& ledger, const Purchasing& purchasing)
      : ledger_(ledger), purchasing_(purchasing) {}

  std::string title() const override { return "To order"; }

  std::string body() const override {
    Table table;
    table.row({"item", "supplier", "quantity", "price"});
    Money sum;
    for (const OrderLine& line : purchasing_.plan(ledger_)) {
      table.row({line.sku.name(), line.supplier.name(), std::to_string(line.quantity),
                 to_text(line.price)});
      sum += line.price;
    }
    return table.layout() + "together " + to_text(sum) + "\n";
  }
};

void print(const Report& report) {
  const std::string title = report.title();
  const std::string line(title.size(), '-');
  std::printf("%s\n%s\n%s\n", title.c_str(), line.c_str(), report.body().c_str());
}

int main() {
  const Sku bolt("bolt M6");
  const Sku hinge("hinge");
  const Sku plate("plate 20x20");

  Catalogue catalogue;
  catalogue.add(bolt, {SupplierId("Ferrum"), Money(4), 500});
  catalogue.add(bolt, {SupplierId("Schraub & Co"), Money(5), 100});
  catalogue.add(hinge, {SupplierId("Beschlag"), Money(185), 10});
  catalogue.add(plate, {SupplierId("Blechwerk"), Money(730), 1});

  Ledger ledger;
  ledger.introduce(StockItem(bolt, 400));
  ledger.introduce(StockItem(hinge, 20));
  ledger.introduce(StockItem(plate, 5));

  const std::vector<std::string> day = {
      "# morning",
      "arrival; bolt M6; 600; 4",
      "arrival; hinge; 30; 190",
      "arrival; plate 20x20; 9; 730",
      "reserve; bolt M6; 250; A-17",
      "reserve; hinge; 12; A-17",
      "",
      "# afternoon",
      "pick; hinge; A-17",
      "count; plate 20x20; 8",
  };
  try {
    for (const Event& event : parse_events(day)) {
      ledger.apply(event);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "depot: %s\n", error.what());
    return 1;
  }

  std::vector<std::string> suppliers;
  const Purchasing purchasing(catalogue);
  for (const OrderLine& line : purchasing.plan(ledger)) {
    suppliers.push_back(line.supplier.name());
  }
  print(StockReport(ledger));
  print(OrderReport(ledger, purchasing));
  std::printf("%d events, %zu open reservations, orders go to %s\n", ledger.applied(),
              ledger.open_reservations(), text::join(suppliers, ", ").c_str());
  return 0;
}
