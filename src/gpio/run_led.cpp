#include "platform/gpio.h"

int stop_runled() {
    return 0;
}
