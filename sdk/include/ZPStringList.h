/*
 * A list of indexed strings as stored in a module file (section
 * ".kvres.STRL.<id>", see ZPPropertyList.h). Big-endian:
 *
 *   uint16 number of strings n
 *   n times: uint16 byte length, then that many bytes of 8-bit text
 *
 * Strings are numbered from 1. Read through "UXK Basic Suite".
 */
#ifndef ZP_STRING_LIST_H
#define ZP_STRING_LIST_H

#define kZPStringListSectionPrefix ".kvres.STRL."

#endif
