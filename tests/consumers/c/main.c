/* A C99 program outside the tree, built against Mensura as a user builds it:
 * converts, renders and reads one value through the flat functions. Exit
 * status 0 when all three agree with what the library promises. */
#include <mensura/ids.h>
#include <mensura/mensura.h>

#include <stdio.h>

static int fail(const char* what) {
    fprintf(stderr, "consumer: %s\n", what);
    return 1;
}

/* Whether a terminated UTF-16 text is the ASCII text expected. */
static int same_text(const MensuraChar16* text, const char* expected) {
    size_t i = 0;
    for (; expected[i] != '\0'; ++i) {
        if (text[i] != (MensuraChar16)(unsigned char)expected[i]) return 0;
    }
    return text[i] == 0;
}

int main(void) {
    const MensuraChar16 input[] = {'1', '0', '0', ' ', 0xB0, 'F', 0}; /* "100 °F" */
    MensuraChar16 text[64];
    MensuraFormatter* formatter;
    double fahrenheit = 0.0;
    double celsius = 0.0;
    double feet = 0.0;
    int status = 0;

    if (Convert(100.0, MENSURA_DEGREE_CELSIUS, &fahrenheit, MENSURA_DEGREE_FAHRENHEIT) !=
            MENSURA_SUCCESS ||
        fahrenheit != 211.99999999999997) {
        return fail("100 degrees Celsius is not 212 degrees Fahrenheit");
    }

    formatter = CreateFormatter(1033);
    if (formatter == NULL) return fail("no formatter");
    /* Symbol 2 of the foot, "ft". */
    if (Format(formatter, 1.0, MENSURA_METER, text, 64, 0x200000 | MENSURA_FOOT, &feet) !=
            MENSURA_SUCCESS ||
        !same_text(text, "3.28 ft") || feet != 1.0 / 0.3048) {
        status = fail("1 m does not render as 3.28 ft");
    } else if (Parse(formatter, input, &celsius, MENSURA_DEGREE_CELSIUS) != MENSURA_SUCCESS ||
               celsius < 37.7777 || celsius > 37.7778) {
        status = fail("100 degrees Fahrenheit does not read as 37.78 degrees Celsius");
    } else {
        printf("100 C = %.2f F; 1 m renders as 3.28 ft; 100 F = %.4f C\n", fahrenheit, celsius);
    }
    DestroyFormatter(formatter);
    return status;
}
