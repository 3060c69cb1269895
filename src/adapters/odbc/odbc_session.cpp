#include "adapters/odbc/odbc_session.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <thread>
#include <utility>

#include "adapters/odbc/connection_string.h"
#include "adapters/odbc/sockets.h"
#include "platform/environment/text.h"

namespace dossierkit::odbc {
namespace {

using environment::Failure;

// How many times as long as a lock is waited for a network may be silent.
constexpr int kSilence = 4;

// Rounded up, since ODBC knows no shorter times.
unsigned SecondsOf(std::chrono::milliseconds time) {
  return static_cast<unsigned>(
      std::max<std::int64_t>(1, std::chrono::ceil<std::chrono::seconds>(time).count()));
}

// A name as the statement writes it: some servers tell it in small letters.
std::string AsWritten(const std::string& name, const std::string& statement) {
  const std::size_t found = environment::LowerCase(statement).find(environment::LowerCase(name));
  return found == std::string::npos ? name : statement.substr(found, name.size());
}

Failure ConnectFailure(const Diagnosis& diagnosis, const std::string& connection_string) {
  const std::string words = WithoutPasswords(diagnosis.words, connection_string);
  const std::string number = diagnosis.number == 0 ? diagnosis.state : std::to_string(diagnosis.number);
  return Failure(environment::kEngineFailure, "无法连接数据库服务器：" + words + "（" + number + "）。");
}

}  // namespace

Session::Session(const std::string& connection_string, std::chrono::milliseconds busy_timeout)
    : servers_(ServersOf(connection_string)), busy_timeout_(busy_timeout) {
  Connect(0, {});
}

void Session::Renew() {
  // Nodes that lost one of them need a moment until they agree.
  Connect(server_ + 1, servers_.size() > 1 ? busy_timeout_ : std::chrono::milliseconds());
}

void Session::Connect(std::size_t first, std::chrono::milliseconds patience) {
  const auto end = std::chrono::steady_clock::now() + patience;
  for (std::size_t tried = 1;; ++tried) {
    server_ = (first + tried - 1) % servers_.size();
    try {
      return ConnectToServer();
    } catch (const Failure&) {
      is_lost_ = true;
      if (tried % servers_.size() != 0) continue;
      if (std::chrono::steady_clock::now() >= end) throw;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

void Session::ConnectToServer() {
  std::string& string = servers_[server_];
  const std::string seconds = std::to_string(SecondsOf(busy_timeout_));
  // One that says nothing is found out by a connection that is not read from for longer: not every driver
  // heeds the time that ODBC has for that. Later on a statement may take as long as it takes.
  LinkTo(WithAttributes(string, "CONN_TIMEOUT=" + seconds + ";READ_TIMEOUT=" + seconds));
  if (engine_ == nullptr) {
    engine_ = &EngineNamed(Told({}, [&] { return link_->Info(SQL_DBMS_NAME); }));
    // Only now it is known what the engine needs.
    for (std::string& one : servers_) one = WithAttributes(one, std::string(engine_->attributes));
  }
  LinkTo(WithAttributes(string, "CONN_TIMEOUT=" + seconds));
  is_lost_ = in_transaction_ = is_undone_ = false;
  for (const std::string_view setting : engine_->session) {
    Run(environment::Replace(environment::Replace(setting, "%ms", std::to_string(busy_timeout_.count())),
                             "%s", seconds));
  }
  if (!engine_->requirement.empty() && Ask(std::string(engine_->requirement)) == engine_->refused_answer)
    throw Failure(environment::kEngineFailure, std::string(engine_->refusal));
}

void Session::LinkTo(const std::string& string) {
  try {
    link_.reset();
    const Sockets before;
    link_ =
        std::make_unique<Link>(string, SecondsOf(busy_timeout_), engine_ != nullptr && engine_->speaks_utf8,
                               engine_ != nullptr && engine_->keeps_statements);
    before.EndInSilence(kSilence * std::chrono::seconds(SecondsOf(busy_timeout_)));
  } catch (const DriverFailure& failure) {
    throw ConnectFailure(failure.diagnosis, string);
  }
}

void Session::BeginTransaction() {
  Told("BeginTrans", [&] { link_->SetInTransaction(true); });
  in_transaction_ = true;
}

void Session::EndTransaction(bool commit) {
  const auto end = [&] {
    link_->End(commit);
    link_->SetInTransaction(false);
  };
  // Of a server that has gone nothing is left to roll back.
  if (commit || !is_lost_) Told(commit ? "CommitTrans" : "RollbackTrans", end);
  in_transaction_ = is_undone_ = false;
}

void Session::Run(const std::string& text) {
  Told(text, [&] { Query(*link_).Execute(text); });
}

std::string Session::Ask(const std::string& question) {
  return Told(question, [&] {
    Query query(*link_);
    query.Execute(question);
    if (!query.Fetch()) return std::string();
    const std::string* answer = query.Text(0);
    return answer == nullptr ? std::string() : *answer;
  });
}

Failure Session::FailureOf(const Diagnosis& diagnosis, const std::string& statement) {
  using What = jet::EngineFailure;
  const std::string words = WithoutPasswords(diagnosis.words, servers_[server_]);
  // Before the engine is known.
  if (engine_ == nullptr) return jet::FailureOf(What::kOther, words, statement);
  const Understood failure = UnderstoodBy(*engine_, diagnosis.state, diagnosis.number, words);
  if (failure.what == What::kConnectionLost) is_lost_ = true;
  if (failure.what == What::kRolledBack) is_undone_ = in_transaction_;
  // A single statement that was undone can be repeated.
  const What what = failure.what == What::kRolledBack && !in_transaction_ ? What::kBusy : failure.what;
  return jet::FailureOf(what, failure.is_cut ? AsWritten(failure.detail, statement) : failure.detail,
                        statement);
}

}  // namespace dossierkit::odbc
