// What customers of a savings bank will have after some years. g++ 12 crashes on it when it
// optimises (-O2).

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bank {

enum class Kind { Savings, Bond, Pension };

// Thousands of these are kept in memory, so they are packed.
struct Tariff {
  unsigned kind : 2;
  unsigned years : 6;
  unsigned percent : 12;  // 1025 stands for 2.5 % a year
  double share;           // of the interest that the customer gets

  double Factor() const { return percent / 1000.0; }
};

struct Account {
  std::string owner;
  double balance = 0;
  std::vector<Tariff> tariffs;
};

class Register {
 public:
  Account& Open(const std::string& owner, double balance) {
    Account& account = accounts[owner];
    account.owner = owner;
    account.balance += balance;
    return account;
  }

  double Total() const {
    double total = 0;
    for (const auto& entry : accounts) total += entry.second.balance;
    return total;
  }

  std::vector<std::string> Owners() const {
    std::vector<std::string> owners;
    for (const auto& entry : accounts) owners.push_back(entry.first);
    return owners;
  }

  const Account& Of(const std::string& owner) const { return accounts.at(owner); }

 private:
  std::map<std::string, Account> accounts;
};

double Growth(const Tariff& tariff) {
  const double whole = std::pow(tariff.Factor(), tariff.years);
  return 1 + (whole - 1) * tariff.share;
}

// True when the interest of all years in one step is still a number. What it is does not matter
// here.
bool IsInRange(const Tariff& tariff) {
  errno = 0;
  std::pow(tariff.percent, tariff.years * tariff.share);
  return errno != ERANGE;
}

double ValueOf(const Account& account) {
  double value = account.balance;
  for (const Tariff& tariff : account.tariffs) {
    if (IsInRange(tariff)) value *= Growth(tariff);
  }
  return value;
}

std::map<Kind, int> Count(const Register& customers) {
  std::map<Kind, int> counts;
  for (const std::string& owner : customers.Owners()) {
    for (const Tariff& tariff : customers.Of(owner).tariffs) ++counts[Kind(tariff.kind)];
  }
  return counts;
}

}  // namespace bank

int main() {
  bank::Register customers;
  customers.Open("Ada", 1200).tariffs = {{0, 5, 1025, 1.0}, {1, 10, 1040, 0.8}};
  customers.Open("Grace", 800).tariffs = {{2, 30, 1030, 0.9}};
  for (const std::string& owner : customers.Owners()) {
    std::printf("%s %.2f\n", owner.c_str(), bank::ValueOf(customers.Of(owner)));
  }
  for (const auto& [kind, count] : bank::Count(customers)) {
    std::printf("%d: %d\n", static_cast<int>(kind), count);
  }
  std::printf("%.2f\n", customers.Total());
}
