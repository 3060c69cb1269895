#include "tests/platform/toolkit/picker_test.h"

namespace dossierkit::toolkit {
namespace {

class TreeViewTest : public PickerTest {
 protected:
  void WithTree(const std::function<void(TreeView&)>& scene) {
    Visit([&] {
      FillTree();
      scene(*form->tree);
    });
  }
  Node Of(const char* key) { return form->tree->Nodes().Find(key); }
  // Presses a key and tells the selected node.
  std::string Press(int key) {
    user.Press(key);
    return Selected();
  }
  // What is in sight from top to bottom.
  Log InSight() {
    Log keys;
    auto& tree = *form->tree;
    for (int node = tree.Nodes().FirstChild(kNoNode); node != kNoNode; node = tree.Below(node)) {
      keys.push_back(tree.Nodes().At(node).Key());
    }
    return keys;
  }
};

TEST_F(TreeViewTest, NodesHaveKeyTextTagAndColour) {
  TreeView tree("tree");
  Node node = tree.Nodes().Add("G1", "高等教育");
  EXPECT_EQ(node.Index(), 0);
  EXPECT_EQ(node.Key(), "G1");
  EXPECT_EQ(node.Text(), "高等教育");
  EXPECT_EQ(node.Tag(), "");
  EXPECT_EQ(node.ForeColor(), kWindowText);
  EXPECT_FALSE(node.Expanded());
  node.SetText("高教");
  node.SetTag("1");
  node.SetForeColor(kButtonShadow);
  node.SetExpanded(true);
  const Node same = tree.Nodes().Find("G1");
  EXPECT_EQ(same.Text(), "高教");
  EXPECT_EQ(same.Tag(), "1");
  EXPECT_EQ(same.ForeColor(), kButtonShadow);
  EXPECT_TRUE(same.Expanded());
  EXPECT_EQ(tree.Nodes().Count(), 1);
}

// Up to the nearest node above that has one behind it.
TEST_F(TreeViewTest, DownLeavesSeveralLevelsAtOnce) {
  WithTree([&](TreeView& tree) {
    const int deep = tree.Nodes().Add(Of("G12").Index(), Relation::kChild, "G121", "工学").Index();
    tree.SetFocus();
    tree.SetSelectedItem(deep);
    EXPECT_EQ(Press(kKeyDown), "G2");
    EXPECT_EQ(Press(kKeyDown), "G2") << "the last one";
  });
}

TEST_F(TreeViewTest, NodesStandUnderTheirRelativeInTheOrderOfAdding) {
  WithTree([&](TreeView& tree) {
    auto& nodes = tree.Nodes();
    EXPECT_EQ(nodes.Count(), 5);
    EXPECT_EQ(nodes.ChildCount(kNoNode), 2);
    const int first = Of("G1").Index();
    EXPECT_EQ(nodes.Parent(first), kNoNode);
    EXPECT_EQ(nodes.ChildCount(first), 2);
    EXPECT_EQ(nodes.FirstChild(first), Of("G11").Index());
    EXPECT_EQ(nodes.LastChild(first), Of("G12").Index());
    EXPECT_EQ(nodes.Next(Of("G11").Index()), Of("G12").Index());
    EXPECT_EQ(nodes.Previous(Of("G12").Index()), Of("G11").Index());
    EXPECT_EQ(nodes.Row(Of("G12").Index()), 1);
    EXPECT_EQ(nodes.Parent(Of("G111").Index()), Of("G11").Index());
    EXPECT_EQ(nodes.Next(Of("G2").Index()), kNoNode);
    const Node sibling = nodes.Add(Of("G11").Index(), Relation::kLast, "G13", "专科");
    EXPECT_EQ(nodes.Parent(sibling.Index()), first);
    EXPECT_EQ(nodes.Row(sibling.Index()), 2);
    EXPECT_EQ(nodes.Parent(nodes.Add(Of("G2").Index(), Relation::kLast, "G3", "").Index()), kNoNode);
  });
}

TEST_F(TreeViewTest, SecondNodeOfAKeyIsRefused) {
  WithTree([&](TreeView& tree) {
    auto& nodes = tree.Nodes();
    try {
      nodes.Add(Of("G2").Index(), Relation::kChild, "G11", "又一");
      FAIL();
    } catch (const environment::Failure& failure) {
      EXPECT_EQ(failure.number(), 35602);
      EXPECT_EQ(failure.description(), "关键字不唯一");
    }
    EXPECT_EQ(nodes.Count(), 5);
    EXPECT_EQ(nodes.ChildCount(Of("G2").Index()), 0);
    EXPECT_EQ(Of("G11").Text(), "研究生");
    EXPECT_EQ(NumberOfFailure([&] { nodes.Add("g11", "另一"); }), 0);
  });
}

TEST_F(TreeViewTest, EachOfManyKeysIsFoundAndTakenOnce) {
  for (const int reserved : {0, 1000, 5000}) {
    TreeView tree("tree");
    tree.Nodes().Reserve(reserved);
    EXPECT_EQ(tree.Nodes().Count(), 0);
    for (int i = 0; i < 3000; ++i) tree.Nodes().Add("G" + std::to_string(i), "");
    for (int i = 0; i < 3000; ++i) {
      const std::string key = "G" + std::to_string(i);
      EXPECT_EQ(tree.Nodes().Find(key).Index(), i);
      EXPECT_EQ(NumberOfFailure([&] { tree.Nodes().Add(key, ""); }), 35602);
    }
    EXPECT_EQ(NumberOfFailure([&] { tree.Nodes().Find("G3000"); }), 35601);
    tree.Nodes().Clear();
    EXPECT_EQ(NumberOfFailure([&] { tree.Nodes().Find("G0"); }), 35601);
    EXPECT_EQ(tree.Nodes().Add("G7", "").Index(), 0);
  }
}

TEST_F(TreeViewTest, NodesWithoutAKeyAreManyAndNotFound) {
  TreeView tree("tree");
  tree.Nodes().Add("", "甲");
  EXPECT_EQ(tree.Nodes().Add("", "乙").Key(), "");
  EXPECT_EQ(tree.Nodes().Count(), 2);
  EXPECT_EQ(NumberOfFailure([&] { tree.Nodes().Find(""); }), 35601);
}

TEST_F(TreeViewTest, NodesThatAreNotThereFail) {
  WithTree([&](TreeView& tree) {
    auto& nodes = tree.Nodes();
    EXPECT_EQ(NumberOfFailure([&] { nodes.Find("G9"); }), 35601);
    EXPECT_EQ(NumberOfFailure([&] { nodes.At(5); }), 35600);
    EXPECT_EQ(NumberOfFailure([&] { nodes.At(-1); }), 35600);
    EXPECT_EQ(NumberOfFailure([&] { nodes.Add(5, Relation::kChild, "G9", ""); }), 35600);
    EXPECT_EQ(NumberOfFailure([&] { nodes.Add(-2, Relation::kLast, "G9", ""); }), 35600);
    EXPECT_EQ(NumberOfFailure([&] { tree.SetSelectedItem(5); }), 35600);
    EXPECT_EQ(NumberOfFailure([&] { nodes.Find("G9"); }), 35601);
    const Node node = Of("G12");
    nodes.Clear();
    EXPECT_EQ(NumberOfFailure([&] { node.Text(); }), 35600);
    EXPECT_EQ(NumberOfFailure([&] { nodes.Find("G1"); }), 35601);
    EXPECT_EQ(nodes.Add("G1", "再来").Index(), 0);
  });
}

TEST_F(TreeViewTest, TouchingTheSelectedNodeFailsWhereThereIsNone) {
  TreeView tree("tree");
  tree.Nodes().Add("G1", "");
  EXPECT_EQ(tree.SelectedItem(), -1);
  EXPECT_EQ(NumberOfFailure([&] { tree.SelectedNode(); }), 91);
  tree.SetSelectedItem(0);
  EXPECT_EQ(tree.SelectedNode().Key(), "G1");
  tree.Nodes().Clear();
  EXPECT_EQ(tree.SelectedItem(), -1);
  EXPECT_EQ(NumberOfFailure([&] { tree.SelectedNode(); }), 91);
}

TEST_F(TreeViewTest, FocusSelectsTheFirstNodeWhereNoneIs) {
  WithTree([&](TreeView& tree) {
    std::string at_focus;
    On(tree.GotFocus, [&] { at_focus = Selected(); });
    tree.SetFocus();
    EXPECT_EQ(at_focus, "G1");
    tree.SetSelectedItem(Of("G2").Index());
    form->button->SetFocus();
    tree.SetFocus();
    EXPECT_EQ(Selected(), "G2");
    tree.Nodes().Clear();
    form->button->SetFocus();
    tree.SetFocus();
    EXPECT_EQ(tree.SelectedItem(), -1);
  });
}

TEST_F(TreeViewTest, RefusedFocusSelectsNothing) {
  WithTree([&](TreeView& tree) {
    form->button->SetFocus();
    On(form->button->Validate, [](bool& cancel) { cancel = true; });
    tree.SetFocus();
    user.ClickNode("tree", "G2");
    tree.UserSelect(1);
    tree.UserExpand(0, true);
    tree.UserDblClick();
    EXPECT_EQ(tree.SelectedItem(), -1);
    EXPECT_FALSE(Of("G1").Expanded());
  });
}

TEST_F(TreeViewTest, ClickSelectsWhatIsInSight) {
  WithTree([&](TreeView& tree) {
    user.ClickNode("tree", "G2");
    EXPECT_EQ(Selected(), "G2");
    EXPECT_TRUE(tree.HasFocus());
    EXPECT_THROW(user.ClickNode("tree", "G12"), std::logic_error);
    tree.UserSelect(9);
    EXPECT_EQ(Selected(), "G2");
  });
}

TEST_F(TreeViewTest, NodesThatGoWhenTheFocusComesAreNotSelected) {
  WithTree([&](TreeView& tree) {
    On(tree.GotFocus, [&] { tree.Nodes().Clear(); });
    tree.UserSelect(Of("G2").Index());
    EXPECT_EQ(tree.SelectedItem(), -1);
    FillTree();
    form->button->SetFocus();
    tree.UserExpand(Of("G1").Index(), true);
    EXPECT_FALSE(form->LoopEnded());
  });
}

TEST_F(TreeViewTest, SelectingOpensWhatIsAbove) {
  WithTree([&](TreeView& tree) {
    tree.SetSelectedItem(Of("G111").Index());
    EXPECT_TRUE(Of("G1").Expanded());
    EXPECT_TRUE(Of("G11").Expanded());
    EXPECT_FALSE(Of("G111").Expanded());
    EXPECT_EQ(InSight(), (Log{"G1", "G11", "G111", "G12", "G2"}));
  });
}

TEST_F(TreeViewTest, ClosingANodeSelectsItInPlaceOfWhatStandsUnderIt) {
  WithTree([&](TreeView& tree) {
    tree.SetSelectedItem(Of("G111").Index());
    Of("G2").SetExpanded(false);
    EXPECT_EQ(Selected(), "G111");
    Of("G1").SetExpanded(false);
    EXPECT_EQ(Selected(), "G1");
    EXPECT_EQ(InSight(), (Log{"G1", "G2"}));
    EXPECT_TRUE(Of("G11").Expanded());
  });
}

TEST_F(TreeViewTest, UpDownHomeAndEndMoveInWhatIsInSight) {
  WithTree([&](TreeView& tree) {
    tree.SetFocus();
    EXPECT_EQ(Press(kKeyDown), "G2");
    EXPECT_EQ(Press(kKeyDown), "G2");
    EXPECT_EQ(Press(kKeyUp), "G1");
    EXPECT_EQ(Press(kKeyDown), "G2");
    Of("G1").SetExpanded(true);
    Of("G11").SetExpanded(true);
    EXPECT_EQ(Press(kKeyUp), "G12");
    EXPECT_EQ(Press(kKeyUp), "G111");
    EXPECT_EQ(Press(kKeyUp), "G11");
    EXPECT_EQ(Press(kKeyHome), "G1");
    EXPECT_EQ(Press(kKeyUp), "G1");
    EXPECT_EQ(Press(kKeyEnd), "G2");
    tree.Nodes().Add(Of("G2").Index(), Relation::kChild, "G21", "");
    EXPECT_EQ(Press(kKeyEnd), "G2");
    Of("G2").SetExpanded(true);
    EXPECT_EQ(Press(kKeyEnd), "G21");
    tree.SetSelectedItem(kNoNode);
    EXPECT_EQ(Press(kKeyUp), "G1");
    tree.Nodes().Clear();
    EXPECT_EQ(Press(kKeyDown), "");
  });
}

TEST_F(TreeViewTest, LeftAndRightCloseOpenAndMove) {
  WithTree([&](TreeView& tree) {
    tree.SetFocus();
    EXPECT_EQ(Press(kKeyRight), "G1");
    EXPECT_TRUE(Of("G1").Expanded());
    EXPECT_EQ(Press(kKeyRight), "G11");
    EXPECT_EQ(Press(kKeyLeft), "G1");
    EXPECT_TRUE(Of("G1").Expanded());
    EXPECT_EQ(Press(kKeyLeft), "G1");
    EXPECT_FALSE(Of("G1").Expanded());
    EXPECT_EQ(Press(kKeyLeft), "G1");
    EXPECT_EQ(Press(kKeyEnd), "G2");
    EXPECT_EQ(Press(kKeyRight), "G2");
    EXPECT_FALSE(Of("G2").Expanded());
  });
}

TEST_F(TreeViewTest, DoubleClickIsRaisedThenFolds) {
  WithTree([&](TreeView& tree) {
    std::vector<bool> open;
    On(tree.DblClick, [&] { open.push_back(tree.SelectedNode().Expanded()); });
    user.ClickNode("tree", "G1");
    user.DoubleClick("tree");
    EXPECT_TRUE(Of("G1").Expanded());
    user.DoubleClick("tree");
    EXPECT_FALSE(Of("G1").Expanded());
    user.ClickNode("tree", "G2");
    user.DoubleClick("tree");
    EXPECT_FALSE(Of("G2").Expanded());
    EXPECT_EQ(open, (std::vector<bool>{false, true, false}));
  });
}

TEST_F(TreeViewTest, DoubleClickMayClearTheTreeOrCloseTheWindow) {
  WithTree([&](TreeView& tree) {
    user.ClickNode("tree", "G1");
    auto hook = tree.DblClick.Subscribe([&] { tree.Nodes().Clear(); });
    user.DoubleClick("tree");
    EXPECT_EQ(tree.SelectedItem(), -1);
    hook.End();
    FillTree();
    user.ClickNode("tree", "G1");
    On(tree.DblClick, [&] { form->Unload(); });
    user.DoubleClick("tree");
    EXPECT_FALSE(form->Loaded());
    EXPECT_FALSE(Of("G1").Expanded());
  });
}

TEST_F(TreeViewTest, EnterReachesKeyPress) {
  WithTree([&](TreeView& tree) {
    std::u32string keys;
    On(tree.KeyPress, [&](char32_t& key) { keys += key; });
    tree.SetFocus();
    user.Press(kKeyReturn);
    EXPECT_EQ(keys, U"\r");
    EXPECT_EQ(Selected(), "G1");
  });
}

TEST_F(TreeViewTest, HoldsAHundredThousandNodes) {
  TreeView tree("tree");
  auto& nodes = tree.Nodes();
  for (int i = 0; i < 100000; ++i) {
    const std::string key = "G" + std::to_string(i);
    if (i < 10) {
      nodes.Add(key, "顶");
    } else {
      nodes.Add(nodes.Find("G" + std::to_string(i / 10)).Index(), Relation::kChild, key, "下");
    }
  }
  EXPECT_EQ(nodes.Count(), 100000);
  EXPECT_EQ(nodes.Find("G99999").Index(), 99999);
  EXPECT_EQ(nodes.Find("G99999").Key(), "G99999");
  EXPECT_EQ(nodes.Find("G0").Text(), "顶");
  tree.SetSelectedItem(99999);
  EXPECT_EQ(tree.LastInSight(), 99999);
}

}  // namespace
}  // namespace dossierkit::toolkit
