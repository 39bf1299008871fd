/* Decompresses data imploded with the PKWare Data Compression Library. Also a header for C. */
#pragma once

#include "VRELExport.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Sets *buffer to the next block of input, which stays valid until the next call, and returns its length; 0 means that
 * there is no more. */
typedef unsigned (*blast_in)(void* how, unsigned char** buffer);

/* Takes bytes of output, which are valid during the call; returns other than 0 if it cannot. */
typedef int (*blast_out)(void* how, unsigned char* buffer, unsigned length);

/* Decompresses from `infun` to `outfun`, which get `inhow` and `outhow` as their first argument, and returns
 *
 *    0   all is done: the end code was read and everything written
 *    1   outfun failed; it is not called again
 *    2   the input ended before the end code
 *   -1   the first byte, which tells whether literals are coded, is above 1
 *   -2   the second byte, which tells the size of the dictionary, is not 4, 5 or 6
 *   -3   a copy reaches behind the start of the output
 *
 * Output comes in blocks of 4096 bytes and what is left at the end, which is written also after errors 2 and -3. A
 * block goes out as soon as it is full, and no block of input is asked for while one byte of the last can help, nor
 * behind the byte that completes the end code.
 *
 * Uses about 9 KB of stack and no heap. May run on any number of threads at a time. */
VREL_EXPORT int blast(blast_in infun, void* inhow, blast_out outfun, void* outhow);

#ifdef __cplusplus
}
#endif
