#include <zqcore/core/ZQContext.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/String.h>

#include "public/detail/FacadeAccess.h"

#include <gtest/gtest.h>

namespace {

namespace zq = Velmora::Tessara::ZQ::Core;
using zq::Context;
using zq::ErrorStack;
using zq::MPT;
using zq::String;
using zq::ZQContext;
using zq::detail::FacadeAccess;

TEST(PublicErrorStack, WrapperOfNothingGivesNeutralResults) {
  ErrorStack stack = FacadeAccess::Borrow<ErrorStack, zq::ZQErrorStack>(nullptr);
  stack.Push("a");
  stack(String("b"));
  stack.SetMsgFromErrno();
  stack.SetAutoLogMsg(true);
  stack.SetMaxNMsg(3);
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_FALSE(stack.IsInitialized());
  EXPECT_FALSE(stack.IsMsgSet());
  EXPECT_FALSE(stack.IsLastMsgSet());
  EXPECT_FALSE(stack.GetAutoLogMsg());
  EXPECT_EQ(stack.GetNMsg(), 0);
  EXPECT_EQ(stack.GetMaxNMsg(), 0);
  EXPECT_TRUE(stack.GetLastMsg().IsEmpty());
  EXPECT_TRUE(stack.Pop().IsEmpty());
}

TEST(PublicMPT, WrapperOfNothingActsAsOneProcess) {
  MPT mpt = FacadeAccess::Borrow<MPT, zq::ZQMPT>(nullptr);
  mpt.SetName("ignored");
  mpt.Reset();
  EXPECT_EQ(mpt.GetNProcs(), 1);
  EXPECT_EQ(mpt.GetProcRank(), 0);
  EXPECT_EQ(mpt.GetName(), nullptr);
  EXPECT_FALSE(mpt.HasPendingMessages());
  EXPECT_FALSE(mpt.IsInitialized());
}

TEST(PublicContext, WrapperOfNothingHandsOutWrappersOfNothing) {
  Context context = FacadeAccess::Borrow<Context, ZQContext>(nullptr);
  context.SetVerbosityLevel(3);
  context.SetDebugLevel(3);
  EXPECT_EQ(context.GetVerbosityLevel(), 0);
  EXPECT_EQ(context.GetDebugLevel(), 0);
  EXPECT_EQ(context.GetContext(), nullptr);
  context.GetErrorStack().Push("lost");
  EXPECT_TRUE(context.GetErrorStack().IsEmpty());
  EXPECT_EQ(context.GetMPT().GetNProcs(), 1);
}

TEST(PublicContext, ErrorStackAndInnerStackShowTheSameMessages) {
  Context context;
  zq::ZQErrorStack &inner = context.GetContext()->GetErrorStack();
  inner.Push("from inside");
  EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(), "from inside");
  context.GetErrorStack()(String("from outside"));
  EXPECT_EQ(inner.GetNMsg(), 2);
  EXPECT_STREQ(inner.GetLastMsg().c_str(), "from outside");
  context.GetErrorStack().Clear();
  EXPECT_TRUE(inner.IsEmpty());
}

TEST(PublicContext, ForwardsLevelsAndMessagePassing) {
  Context context;
  ZQContext *inner = context.GetContext();
  EXPECT_EQ(context.GetVerbosityLevel(), -1);
  EXPECT_EQ(context.GetDebugLevel(), -1);
  context.SetVerbosityLevel(2);
  context.SetDebugLevel(5);
  EXPECT_EQ(inner->GetVerbosityLevel(), 2);
  EXPECT_EQ(inner->GetDebugLevel(), 5);

  EXPECT_TRUE(context.GetMPT().IsInitialized());
  EXPECT_EQ(context.GetMPT().GetNProcs(), ZQContext::GetNProcs(inner));
  EXPECT_EQ(context.GetMPT().GetProcRank(), ZQContext::GetProcRank(inner));
  context.GetMPT().SetName("solver");
  EXPECT_STREQ(inner->GetMPT().GetName(), "solver");
}

TEST(PublicContext, BorrowingWrappersLeaveTheInnerObjectsAlive) {
  ZQContext inner;
  {
    Context context = FacadeAccess::Borrow<Context>(&inner);
    context.SetVerbosityLevel(4);
    context.GetErrorStack().Push("kept");
    ErrorStack stack = FacadeAccess::Borrow<ErrorStack>(&inner.GetErrorStack());
    MPT mpt = FacadeAccess::Borrow<MPT>(&inner.GetMPT());
  }
  EXPECT_EQ(inner.GetVerbosityLevel(), 4);
  EXPECT_STREQ(inner.GetErrorStack().GetLastMsg().c_str(), "kept");
  EXPECT_TRUE(inner.GetMPT().IsInitialized());
}

TEST(PublicErrorStack, CopiesOwnTheirMessagesAndAssignmentWritesThrough) {
  Context context;
  context.GetErrorStack().Push("a");
  ErrorStack copy(context.GetErrorStack());
  copy.Push("b");
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), 1);
  EXPECT_EQ(copy.GetNMsg(), 2);

  context.GetErrorStack() = copy;
  EXPECT_STREQ(context.GetContext()->GetErrorStack().GetLastMsg().c_str(), "b");
}

TEST(PublicMPT, OwnedCopyHasItsOwnCommunicatorAndNoName) {
  MPT mpt;
  mpt.SetName("solver");
  MPT copy(mpt);
  EXPECT_TRUE(copy.IsInitialized());
  EXPECT_STREQ(copy.GetName(), "");
  EXPECT_EQ(copy.GetNProcs(), mpt.GetNProcs());

  mpt.Reset();
  EXPECT_FALSE(mpt.IsInitialized());
  EXPECT_TRUE(copy.IsInitialized());
  EXPECT_STREQ(mpt.GetName(), "solver");
}

} // namespace
