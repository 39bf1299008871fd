/* Decompressor for data imploded with the PKWare Data Compression Library. Also a header for C. */
#pragma once

#include "VRELExport.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Input callback: sets *buffer to the next block of input, which must stay valid until the next call, and returns its
 * length; 0 at the end of input. */
typedef unsigned (*blast_in)(void* how, unsigned char** buffer);

/* Output callback: takes `length` bytes, which are valid during the call. Returns 0, or another value on failure. */
typedef int (*blast_out)(void* how, unsigned char* buffer, unsigned length);

/* Decompresses from `infun` to `outfun`, which receive `inhow` and `outhow` as their first argument.
 *
 *   struct Input input = ...;
 *   struct Output output = ...;
 *   if (blast(ReadBlock, &input, WriteBlock, &output) != 0) ...
 *
 * Returns:
 *    0   success: the end code was read and everything was written
 *    1   outfun failed; it is not called again
 *    2   the input ended before the end code
 *   -1   the first byte, the literal flag, is above 1
 *   -2   the second byte, the dictionary size, is not 4, 5 or 6
 *   -3   a copy refers to bytes before the start of the output
 *
 * Output is written in blocks of 4096 bytes, and the rest at the end, also after errors 2 and -3. A block is written as
 * soon as it is full. Input is requested only when it is needed, and never after the byte that completes the end code.
 *
 * Performance: uses about 9 KB of stack and no heap.
 * Thread safety: any number of threads can decompress at a time. */
VREL_EXPORT int blast(blast_in infun, void* inhow, blast_out outfun, void* outhow);

#ifdef __cplusplus
}
#endif
