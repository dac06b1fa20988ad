// Tests of what goes over a network, in one of their own.
#include "support/own_network.h"

#include <gtest/gtest.h>

int main(int count, char** arguments) {
    larkspin::enterOwnNetwork();
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
