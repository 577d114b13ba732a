/* CoreFoundation for systems that lack it: what the engine uses of it, under the platform's names
 * and rules. A create or copy function's result is the caller's to release; a get function's is
 * not. Retain and release are safe from any thread; releasing NULL ends the process.
 *
 * A call that would use memory that is not its own on the platform ends the process here, after one
 * line on standard error that names the call: a reference to a released object or to one of another
 * type, an index beyond a list, callbacks that are not the platform's. */
#ifndef HALVERMONTE_PORTABLE_COREFOUNDATION_H
#define HALVERMONTE_PORTABLE_COREFOUNDATION_H

#include <CoreFoundation/LinkName.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned char Boolean;
typedef long CFIndex;
typedef uint32_t CFStringEncoding;
typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFArray* CFArrayRef;
typedef struct __CFArray* CFMutableArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFDictionary* CFMutableDictionaryRef;

#define kCFAllocatorDefault ((CFAllocatorRef)0)

/* For functions whose result is the caller's to release, though their names do not say so. */
#define CF_RETURNS_RETAINED

CFTypeRef CFRetain(CFTypeRef object) HALVERMONTE_LINK_NAME(CFRetain);
void CFRelease(CFTypeRef object) HALVERMONTE_LINK_NAME(CFRelease);

/* Texts, kept as UTF-8. The system's 8-bit encoding is Mac OS Roman, of which ASCII is known here.
 * NULL if the characters are not valid in the encoding, or the encoding is another one. */
enum { kCFStringEncodingMacRoman = 0, kCFStringEncodingUTF8 = 0x08000100 };
CFStringEncoding CFStringGetSystemEncoding(void) HALVERMONTE_LINK_NAME(CFStringGetSystemEncoding);
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* characters,
                                      CFStringEncoding encoding)
    HALVERMONTE_LINK_NAME(CFStringCreateWithCString);
typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;
/* At least as many as the text has UTF-16 units, and enough for the functions below. */
CFIndex CFStringGetLength(CFStringRef text) HALVERMONTE_LINK_NAME(CFStringGetLength);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding)
    HALVERMONTE_LINK_NAME(CFStringGetMaximumSizeForEncoding);
/* Writes the whole text (there is no other range here) as UTF-8 without a NUL, and its size in
 * bytes. Returns the number of units written; 0 if the buffer is too small. */
CFIndex CFStringGetBytes(CFStringRef text, CFRange range, CFStringEncoding encoding,
                         uint8_t lossByte, Boolean isExternalRepresentation, uint8_t* buffer,
                         CFIndex size, CFIndex* usedSize) HALVERMONTE_LINK_NAME(CFStringGetBytes);

/* A constant text, alive as long as the process. */
CFStringRef CFStringMakeConstantString_(const char* characters)
    HALVERMONTE_LINK_NAME(CFStringMakeConstantString_);
#ifdef __cplusplus
#define CFSTR(literal)                                                           \
  ([]() -> CFStringRef {                                                         \
    static const CFStringRef constant = CFStringMakeConstantString_("" literal); \
    return constant;                                                             \
  }())
#endif

/* Numbers. */
typedef CFIndex CFNumberType;
enum {
  kCFNumberSInt32Type = 3,
  kCFNumberSInt64Type = 4,
  kCFNumberDoubleType = 13,
};
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value)
    HALVERMONTE_LINK_NAME(CFNumberCreate);
/* 1 if the value came over without loss. */
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value)
    HALVERMONTE_LINK_NAME(CFNumberGetValue);

/* Lists. They retain their elements if they are made with the platform's callbacks; made without
 * any (NULL), they hold bare pointers. */
typedef struct {
  int unused;
} CFArrayCallBacks;
extern const CFArrayCallBacks kCFTypeArrayCallBacks HALVERMONTE_LINK_NAME(kCFTypeArrayCallBacks);
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                       const CFArrayCallBacks* callBacks)
    HALVERMONTE_LINK_NAME(CFArrayCreateMutable);
void CFArrayAppendValue(CFMutableArrayRef array, const void* value)
    HALVERMONTE_LINK_NAME(CFArrayAppendValue);
CFIndex CFArrayGetCount(CFArrayRef array) HALVERMONTE_LINK_NAME(CFArrayGetCount);
/* REQUIRES: an index within the list. */
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index)
    HALVERMONTE_LINK_NAME(CFArrayGetValueAtIndex);

/* Maps from text. Keys and values are retained as a list's elements are. Without key callbacks, a
 * key is found by its identity, not by its characters. */
typedef struct {
  int unused;
} CFDictionaryKeyCallBacks;
typedef struct {
  int unused;
} CFDictionaryValueCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks
    HALVERMONTE_LINK_NAME(kCFTypeDictionaryKeyCallBacks);
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks
    HALVERMONTE_LINK_NAME(kCFTypeDictionaryValueCallBacks);
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks)
    HALVERMONTE_LINK_NAME(CFDictionaryCreate);
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary)
    HALVERMONTE_LINK_NAME(CFDictionaryGetCount);
/* NULL if the key is missing. */
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key)
    HALVERMONTE_LINK_NAME(CFDictionaryGetValue);

#ifdef __cplusplus
}
#endif

#endif
