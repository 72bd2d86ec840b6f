/* What the C tests share: a check that counts and names its failures, the
 * comparison of doubles bit for bit, and the summary that is the exit status. */
#ifndef MENSURA_TESTS_CAPI_CHECK_H
#define MENSURA_TESTS_CAPI_CHECK_H

#include <stdio.h>
#include <string.h>

static int passed = 0;
static int failed = 0;

static inline void check(int condition, const char* what) {
    if (condition) {
        ++passed;
    } else {
        ++failed;
        printf("FAILED: %s\n", what);
    }
}

static inline int same_bits(double a, double b) { return memcmp(&a, &b, sizeof a) == 0; }

/* Prints the counts; the exit status of the test. */
static inline int summary(void) {
    printf("%d passed, %d failed\n", passed, failed);
    return failed == 0 ? 0 : 1;
}

#endif /* MENSURA_TESTS_CAPI_CHECK_H */
