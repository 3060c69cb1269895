// Writer: copies the tokens of a statement in the form of an engine.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/environment/value.h"
#include "platform/jet/kinds.h"
#include "platform/jet/renderer.h"
#include "platform/jet/statement.h"
#include "platform/jet/tokens.h"

namespace dossierkit::jet {

// Goes once over the tokens, from the first to the last, and never back. What the engine writes as the
// dialect does is copied byte for byte. Everything that it takes must outlive it.
class Writer {
 public:
  Writer(std::string_view statement, const std::vector<Token>& tokens, const Renderer& renderer,
         const ColumnLookup& lookup, Statement& result);

  // Writes all tokens before `behind` that are not written yet.
  void WriteUpTo(std::size_t behind);
  // The same for tokens in which "=" compares nothing.
  void WriteNamesUpTo(std::size_t behind);
  // Writes all that is left.
  void Finish();
  // The next tokens, up to `behind`, are left out: with the blanks behind them, or with those before them.
  void LeaveOutWithBlanksBehind(std::size_t behind);
  void LeaveOutWithBlanksBefore(std::size_t behind);
  // Puts a constant in the place of the next tokens, up to `behind`.
  void PutConstant(environment::Value value, std::size_t behind);
  // Writes all tokens before `behind`, and `text` before the one there.
  void PutBefore(std::size_t behind, std::string_view text);
  // Puts an alias in the place of the next token; in an order it is then known by its former name.
  void PutAlias(const std::string& alias);

 private:
  // What becomes of the tokens of a value that is still to come.
  struct Plan {
    std::size_t begin;
    std::size_t end;
    bool folds;
    std::optional<environment::Value> constant;  // in their place
  };
  // An open "(", or the statement itself.
  struct Level {
    std::size_t select;   // that it stands in, as Kinds counts them
    int iif_commas = -1;  // of an iif that is written in the engine's way
    bool in_order = false;
    bool in_list = false;  // in('a','b') of texts
    bool starts_item = false;
  };

  const Token& At(std::size_t index) const;
  const Kinds& KnownKinds();
  void CopyBytesUpTo(std::size_t position);
  void Put(std::string_view text, std::size_t behind);
  void KeepApart(std::size_t behind);
  void Note(std::size_t offset, std::size_t size, environment::Value value);

  void WriteNextPlainly();
  void WriteNext();
  void WriteWord();
  void WriteOperator();
  void WriteConstant();
  bool WriteLike();
  void OpenIif();
  void CloseParenthesis();
  void EndOrderItem();

  void PlanAround(std::size_t index);
  void PlanItem(const Operand& item);
  void PlanComparison(const Operand& left, const Operand& right);
  void PlanList(const Operand& left, std::size_t open);
  void FollowPlan();
  std::optional<environment::Value> InTheKindOf(const Operand& constant, const Operand& other) const;
  bool IsEmptyText(const Operand& operand) const;
  bool EndsItem(std::size_t index) const;

  std::string_view statement_;
  const std::vector<Token>& tokens_;
  const Renderer& renderer_;
  const ColumnLookup& lookup_;
  Statement& result_;
  const bool needs_kinds_;
  const bool needs_levels_;
  const bool is_plain_;
  std::optional<Kinds> kinds_;
  std::size_t next_ = 0;    // token
  std::size_t copied_ = 0;  // bytes of the statement that are in the result, or left out
  bool compares_ = true;
  std::size_t selects_;  // words "select" so far, as Kinds counts them
  std::vector<Level> levels_;
  std::vector<Plan> plans_;                     // the first one to come is the last
  std::vector<std::size_t> lists_;              // the "(" of lists of texts that are still to come
  std::vector<std::size_t> ends_;               // behind which a fold ends; the first one to come is the last
  std::map<std::string, std::string> aliases_;  // by the former name in small letters
};

}  // namespace dossierkit::jet
