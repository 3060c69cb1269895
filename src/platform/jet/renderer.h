// Renderer: how an engine writes what it has no word of the dialect for.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/environment/value.h"

namespace dossierkit::jet {

// One engine's ways, as plain data: what is left out here, the engine writes as the dialect does. The texts
// are put into statements as they are, so that each brings the blanks that it needs; they must outlive the
// renderer.
struct Renderer {
  // iif(c,a,b): what stands before c, between c and a, between a and b, and behind b.
  struct Iif {
    std::string_view condition;
    std::string_view then;
    std::string_view otherwise;
    std::string_view end;
  };
  std::optional<Iif> iif = {};

  // The function that counts the characters of a text.
  std::string_view len = "len";

  // The engine's own like, for constant patterns; any other is then refused. A pattern without [sets] goes
  // behind `word` and before `behind`; one with sets becomes a regular expression from `begin` to `end`
  // behind `matches` or `matches_not`.
  struct Like {
    std::string_view word;
    std::string_view behind;
    std::string_view matches;
    std::string_view matches_not;
    std::string_view begin;
    std::string_view end;
  };
  std::optional<Like> like = {};

  // A function that takes the case out of a text where texts are compared and ordered; none where the
  // engine's columns disregard case by themselves.
  std::string_view fold = {};
  // Behind an ascending and behind a descending item of an order, so that NULL comes before everything.
  std::string_view nulls_first = {};
  std::string_view nulls_last = {};

  // Constants: true and false, what stands before the literal of a date, whether "\" in a literal is doubled.
  std::string_view true_constant = "true";
  std::string_view false_constant = "false";
  std::string_view date = {};
  bool doubles_backslashes = false;
  // A constant must be of the kind of the column that it is compared with, as in dmattr=1 or A0299='5'.
  bool is_strict = false;

  // The quote around a name that stood in brackets, written in small letters then; empty: it stays as it is.
  std::string_view name_quote = {};
  // What stands before the table that a statement changes, as in "main."; nothing before those that it reads.
  std::string_view stored_in = {};
  // The most bytes of a name that is given to a column of a result. A longer one becomes c1, c2, ..; 0: no
  // limit, and the engine gives names back as they were written.
  std::size_t longest_name = 0;
};

// A value as a constant of the engine: a text or date as a literal, a number in plain decimal with all its
// digits, a Boolean.
std::string ConstantOf(const environment::Value& value, const Renderer& renderer);

}  // namespace dossierkit::jet
