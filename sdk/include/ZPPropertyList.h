/*
 * The plug-in property list: the resource of type "PIPL", name "PLUGIN", by
 * which the host recognises a plug-in file before loading it. All integers
 * are big-endian:
 *
 *   header:   int32 1, int32 0, int32 number of properties
 *   property: vendor (4 chars), key (4 chars), int32 id (0),
 *             int32 data length, data
 *
 * On ELF systems a resource lives in a section of the module file named
 * ".kvres.<type>.<name>": the property list in ".kvres.PIPL.PLUGIN", a list
 * of indexed strings with id N in ".kvres.STRL.<N>" (ZPStringList.h).
 */
#ifndef ZP_PROPERTY_LIST_H
#define ZP_PROPERTY_LIST_H

#define kZPResourceSectionPrefix ".kvres."
#define kZPPropertyListSection ".kvres.PIPL.PLUGIN"

#define kZPPropertyListVersion 1
#define kZPPropertyVendor "ORVK"
#define kZPKindProperty "kind"        /* data: the plug-in kind, kZPPluginKind */
#define kZPPluginKind "ZPEA"
#define kZPInterfaceVersionProperty "ivrs" /* data: int32 interface version */
#define kZPInterfaceVersion 2
#define kZPEntryPointProperty "wx86"  /* data: the entry point's name, zero padded to a multiple of 4 */
#define kZPPluginNameProperty "pinm"  /* data: the internal name, no terminator */

#endif
