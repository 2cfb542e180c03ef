#include "TempProgramFolder.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace {

// The server run of the tests skips every test, with the reason, when no server is given.
class ServerTestsEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (TempProgramFolder::serverTests() && TempProgramFolder::testServer().isEmpty())
            GTEST_SKIP() << "No test server: set TAVIMETRA_TEST_SERVER to the socket folder of a PostgreSQL "
                            "server (scripts/test starts one)";
    }
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new ServerTestsEnvironment);
    return RUN_ALL_TESTS();
}
