#include "Support.h"

using CorvexTest::Status;
using Halmont::Orrin::CorvexMaths::Robust::Answer;

TEST(Status, HoldsForDoneAloneAndEachHasItsWords)
{
    std::set<std::string> words;
    for (const Status status :
         {Status::Done, Status::TooFewPoints, Status::Degenerate, Status::NotFinite, Status::NotConverged})
    {
        Answer answer;
        EXPECT_FALSE(answer);
        answer.status = status;
        EXPECT_EQ(static_cast<bool>(answer), status == Status::Done);
        EXPECT_TRUE(words.insert(Answer::Describe(status)).second);
    }
}
