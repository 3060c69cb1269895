// Text: UTF-8 strings whose lengths and positions count in code points.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dossierkit::environment {

// Number of code points. Each byte that is no part of a valid sequence counts as one.
std::size_t Length(std::string_view text);

// `count` code points from `start` (counted from 0); less where the text ends before.
std::string Middle(std::string_view text, std::size_t start, std::size_t count = std::string::npos);

// The first and the last `count` code points.
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);

// The code points of the text, each as its own UTF-8 string.
std::vector<std::string> Characters(std::string_view text);

// The code point at byte `position`, which must lie within the text; moves `position` behind it. A
// byte that is no part of a valid sequence is U+FFFD by itself.
char32_t NextCharacter(std::string_view text, std::size_t& position);

// One code point as UTF-8.
std::string Encode(char32_t character);

// The text with each ASCII capital made small; other characters are left alone.
std::string LowerCase(std::string_view text);
std::string UpperCase(std::string_view text);

// The text less the blanks and tabs at its ends, as numbers and dates are read. Points into `text`.
std::string_view WithoutOuterBlanks(std::string_view text);

// Equality without regard to ASCII case.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

// Each occurrence of `what` (not empty) replaced by `with`.
std::string Replace(std::string_view text, std::string_view what, std::string_view with);

// The pieces between occurrences of `separator` (not empty); the empty text has no piece.
std::vector<std::string> Split(std::string_view text, std::string_view separator);

// The text with every byte that is no valid UTF-8 replaced by U+FFFD.
std::string ValidUtf8(std::string_view text);

}  // namespace dossierkit::environment
