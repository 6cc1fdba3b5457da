#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

using Velmora::Tessara::ZQ::Core::ZQErrorStack;
using Velmora::Tessara::ZQ::Core::ZQResult;
using Velmora::Tessara::ZQ::Core::ZQString;

namespace {

ZQErrorStack StackWith(std::initializer_list<char const *> messages, long long maxNMsg) {
  ZQErrorStack stack;
  stack.SetMaxNMsg(maxNMsg);
  for (char const *message : messages) {
    stack(message);
  }
  return stack;
}

} // namespace

TEST(Result, OnlyStatusZeroIsSuccessAndPrintsAsNumber) {
  ZQResult unset;
  EXPECT_EQ(unset.GetStatusCode(), -1);
  EXPECT_FALSE(unset.OK());
  EXPECT_STREQ(unset.ToString(nullptr).c_str(), "Result(Status=-1)");

  ZQResult success(0);
  EXPECT_TRUE(success.OK());
  EXPECT_STREQ(success.ToString(nullptr).c_str(), "Result(Status=0)");

  ZQResult failure = success;
  failure.SetStatusCode(1000);
  EXPECT_FALSE(failure.OK());
  EXPECT_TRUE(success.OK());
  failure.SetStatusCode(33);
  EXPECT_STREQ(failure.ToString("ignored").c_str(), "Result(Status=33)");
}

TEST(ErrorStack, BoundDropsExactlyTheOldestMessage) {
  ZQErrorStack stack = StackWith({"a", "b", "c"}, 2);
  EXPECT_EQ(stack.GetNMsg(), 2);
  EXPECT_STREQ(stack.Pop().c_str(), "c");
  EXPECT_STREQ(stack.Pop().c_str(), "b");
  EXPECT_STREQ(stack.Pop().c_str(), "");
  EXPECT_TRUE(stack.IsEmpty());
}

TEST(ErrorStack, BoundOfZeroOrLessIsUnbounded) {
  for (long long bound : {0LL, -5LL}) {
    ZQErrorStack stack;
    stack.SetMaxNMsg(bound);
    for (int i = 0; i < 2000; ++i) {
      stack("m");
    }
    EXPECT_EQ(stack.GetNMsg(), 2000) << "bound " << bound;
  }
  EXPECT_EQ(ZQErrorStack().GetMaxNMsg(), 1024);
}

TEST(ErrorStack, LoweringTheBoundTrimsNothingAndEachPushStillDropsOne) {
  ZQErrorStack stack = StackWith({"1", "2", "3", "4", "5"}, 10);
  stack.SetMaxNMsg(2);
  EXPECT_EQ(stack.GetNMsg(), 5);
  stack("6");
  EXPECT_EQ(stack.GetNMsg(), 5);
  EXPECT_STREQ(stack.GetLastMsg().c_str(), "6");
  for (int i = 0; i < 4; ++i) {
    stack.Pop();
  }
  EXPECT_STREQ(stack.Pop().c_str(), "2");
}

TEST(ErrorStack, EmptyMessagesCountButAreNotSet) {
  ZQErrorStack stack = StackWith({""}, 1024);
  EXPECT_FALSE(stack.IsEmpty());
  EXPECT_TRUE(stack.IsInitialized());
  EXPECT_FALSE(stack.IsMsgSet());
  EXPECT_FALSE(stack.IsLastMsgSet());
  EXPECT_EQ(stack.GetNMsg(), 1);

  ZQErrorStack mixed = StackWith({"a", ""}, 1024);
  EXPECT_TRUE(mixed.IsMsgSet());
  EXPECT_FALSE(mixed.IsLastMsgSet());
  EXPECT_STREQ(mixed.GetLastMsg().c_str(), "");
  EXPECT_EQ(mixed.GetNMsg(), 2);
}

TEST(ErrorStack, ClearKeepsSettingsWhileResetRestoresDefaults) {
  ZQErrorStack stack = StackWith({"a", "b"}, 5);
  stack.SetAutoLogMsg(true);
  stack.Clear();
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_EQ(stack.GetMaxNMsg(), 5);
  EXPECT_TRUE(stack.GetAutoLogMsg());

  stack("c");
  stack.Reset();
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_EQ(stack.GetMaxNMsg(), 1024);
  EXPECT_FALSE(stack.GetAutoLogMsg());
}

TEST(ErrorStack, CopiesHaveIndependentMessages) {
  ZQErrorStack original = StackWith({"a"}, 7);
  ZQErrorStack copy(original);
  copy("b");
  EXPECT_EQ(original.GetNMsg(), 1);
  EXPECT_EQ(copy.GetMaxNMsg(), 7);

  ZQErrorStack assigned;
  assigned = copy;
  assigned = assigned;
  EXPECT_EQ(assigned.GetNMsg(), 2);
  EXPECT_STREQ(assigned.Pop().c_str(), "b");
  EXPECT_EQ(copy.GetNMsg(), 2);
}

TEST(ErrorStack, PushesTextOfErrnoAndTranscodesWideMessages) {
  ZQErrorStack stack;
  errno = ENOENT;
  stack.SetMsgFromErrno();
  EXPECT_STREQ(stack.GetLastMsg().c_str(), std::strerror(ENOENT));
  errno = EACCES;
  stack.SetMsgFromLastError();
  EXPECT_STREQ(stack.GetLastMsg().c_str(), std::strerror(EACCES));

  stack(L"\u00e9t\u00e9");
  EXPECT_STREQ(stack.GetLastMsg().c_str(), "\xC3\xA9t\xC3\xA9");
  stack.Push(static_cast<char const *>(nullptr));
  EXPECT_STREQ(stack.GetLastMsg().c_str(), "");
  EXPECT_EQ(stack.GetNMsg(), 4);
}
