/* The flat functions from C: convert, render and read back.
 *
 *   build/examples/mensura_example_flat_api
 */
#include <stdio.h>

#include "mensura/mensura.h"

int main(void) {
    double out = 0.0;
    MensuraChar16 text[64];
    const MensuraChar16 input[] = {'5', ' ', 'f', 't', 0};
    Formatter* formatter;
    size_t i;

    if (Convert(1.0, 0x2017, &out, 0x2016) != 0) return 1;
    printf("1 ft = %g in\n", out);

    formatter = CreateFormatter(1033);
    if (Format(formatter, 1.0, 0x2001, text, 64, 0x202017, &out) == 0) {
        printf("1 m renders as ");
        for (i = 0; text[i] != 0; ++i) putchar(text[i] < 0x80 ? (int)text[i] : '?');
        printf(" (%g ft)\n", out);
    }
    if (Parse(formatter, input, &out, 0x2001) == 0) printf("5 ft reads as %g m\n", out);
    DestroyFormatter(formatter);
    printf("%d groups\n", (int)GetUnitGroups(NULL));
    return 0;
}
