#include "platform/toolkit/loop/input_queue.h"

#include <gtest/gtest.h>

namespace dossierkit::toolkit {
namespace {

std::string Text(const std::optional<InputQueue::Item>& item) {
  if (!item) return "nothing";
  if (const auto* size = std::get_if<Size>(&*item)) return "size " + std::to_string(size->width);
  if (const auto* page = std::get_if<std::shared_ptr<UserControl>>(&*item)) return (*page)->Name();
  return std::get<SentKeys>(*item).keys;
}

TEST(InputQueue, ASizeComesBeforePagesAndPagesBeforeKeys) {
  InputQueue queue;
  const auto first = std::make_shared<UserControl>("first");
  const auto second = std::make_shared<UserControl>("second");
  queue.AddKeys({"{tab}", {}, false});
  queue.AddKeys({"{Home}+{End}", {}, false});
  queue.AddPage(first);
  queue.AddPage(second);
  queue.SetSize(Size{100, 50});
  queue.SetSize(Size{200, 50});
  EXPECT_TRUE(queue.HasPages());
  for (const char* expected : {"size 200", "first", "second", "{tab}", "{Home}+{End}", "nothing"})
    EXPECT_EQ(Text(queue.Next()), expected);
  EXPECT_FALSE(queue.HasPages());
}

TEST(InputQueue, WhatHasGoneIsLeftOut) {
  InputQueue queue;
  auto page = std::make_shared<UserControl>("page");
  queue.AddPage(page);
  queue.AddKeys({"{tab}", page, true});
  queue.AddKeys({"{Home}+{End}", {}, false});
  page.reset();
  EXPECT_EQ(Text(queue.Next()), "{Home}+{End}");
  EXPECT_EQ(Text(queue.Next()), "nothing");
}

TEST(InputQueue, ForgetsAllOrTheKeysAlone) {
  InputQueue queue;
  const auto page = std::make_shared<UserControl>("page");
  queue.AddKeys({"{tab}", {}, false});
  queue.AddPage(page);
  queue.ForgetKeys();
  EXPECT_EQ(Text(queue.Next()), "page");
  EXPECT_EQ(Text(queue.Next()), "nothing");
  queue.AddKeys({"{tab}", {}, false});
  queue.AddPage(page);
  queue.SetSize(Size{1, 1});
  queue.Forget();
  EXPECT_EQ(Text(queue.Next()), "nothing");
}

TEST(InputQueue, KnowsTheOutermostEvent) {
  InputQueue queue;
  const InputQueue::Event outer(queue);
  EXPECT_TRUE(queue.Outermost());
  {
    const InputQueue::Event inner(queue);
    EXPECT_FALSE(queue.Outermost());
  }
  EXPECT_TRUE(queue.Outermost());
}

}  // namespace
}  // namespace dossierkit::toolkit
