#pragma once

// Every class of the host's libraries that crosses a library boundary carries this mark; everything else is hidden.
#define TARN_HOST_EXPORT __attribute__((visibility("default")))
