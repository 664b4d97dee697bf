/// @file
/// The toolbox of every reader and writer: single values out of a parsed TinyXML tree, single
/// values into a tree under construction, and the printer's keywords as codes.
///
/// Conventions that hold for the whole library:
///  1. An operation returns true when it read or wrote something; it never prints and never throws
///     by itself. Where memory ends std::bad_alloc passes through, nothing is lost and no lock
///     stays held. A record then holds what was stored before, which is nothing while a text was
///     still being parsed; an AddTag operation leaves its tree as it was; a writer keeps what it
///     had added (a host begins with a fresh one) and leaves an output in memory untouched, while a
///     file that the host named may be incomplete.
///  2. A value that could not be read leaves its target as the caller had it, unless the operation
///     says otherwise.
///  3. "The text of an element" is the value of its first child node: the text of a text or CDATA
///     section, also that of a comment, and the name of an element that stands first.
///  4. Numbers follow the C library and the process's locale: leading blanks are skipped, what
///     stands behind the digits is ignored, and no number at all reads as 0. Decimals have the
///     point of LC_NUMERIC, in what is read and in what is written. The printer's is ".", so a host
///     sets LC_CTYPE alone: under a German locale setlocale(LC_ALL, "") makes all of them commas.
///  5. Operations on different objects may run in several threads at once.
///  6. Some writers leave a copy of their document under /tmp, for people who debug a host. It may
///     hold network keys: it is written with mode 0600 beside its name and then renamed over it, so
///     that the name never stands for half a copy, nor for a mixture of two. A copy is skipped, and
///     nothing else changes, where its name is taken by anything but a regular file of the calling
///     user that has no other name (a symbolic link, a hard one, a file of somebody else, a
///     folder), and where it cannot be written whole: no leave, no room, a process limit on the
///     size of files (whose signal never reaches the host). An earlier copy stays then. A library
///     built with KOVRA_DEBUG_COPIES off writes none.
///  7. Wide text is converted in the process's character set (LC_CTYPE), which is ASCII until the
///     host calls setlocale(LC_CTYPE, ""). The length of a wide reply is its number of characters,
///     and also the most bytes that its narrow form may have: a letter beyond ASCII may take
///     several, and a reply that is cut is refused. A host whose text is terminated passes
///     `reply.size() * MB_CUR_MAX`; what stands behind the terminator is not looked at.
///  8. A wide document that does not fit into its output is cut, and the result is true all the
///     same. The output is full then and has no terminator: std::wmemchr(out, L'\0', outLen) is
///     null. At a character that the character set lacks the output ends early, with a terminator.
///     A document that is whole ends with ">" and a line feed. It stays in its writer, whose
///     saveJob() a host may call again with more room. Each writer says how much is enough: six
///     characters for one of a text is the most that escaping takes.

#ifndef KVXHELPER_H
#define KVXHELPER_H

#include "kovra_base.h"
#include "kvxsettingrecords.h"

namespace Kovra {

/// The printer's words for a magnetic stripe's coercivity, indexed by the code that
/// KVXHelper::CoercivityToInt gives. Every translation unit has its own copy.
static constexpr char const* const COERCIVITYTYPES[3] = {"none", "low", "high"};

/// The ribbon or film description that was read last by a configuration reader of this process.
/// Readers publish it under a lock of their own; a host that reads it while another thread reads a
/// configuration sees whatever stands there at the moment.
extern KOVRA_EXPORT char szRibbonName[32];

}  // namespace Kovra

/// Stateless operations on single values of a TinyXML tree.
///
/// Wherever an operation takes a `char*` that it only reads (a tag, an attribute name, a keyword)
/// a string literal or a `char const*` may be passed as well, and NULL or nullptr wherever null is
/// said to have a meaning.
class KOVRA_EXPORT KVXHelper {
 public:
  KVXHelper();
  ~KVXHelper();

  /// @name Reading an attribute
  /// Each returns false, and leaves @p out as it was, when @p el or @p attr is null, or the element
  /// has no such attribute.
  /// @{

  /// Copies the attribute's value with its terminator: at most `len - 1` characters. False, with
  /// nothing stored, when @p len is below 1 or @p out is null. Characters of @p out behind the
  /// terminator are left alone.
  static bool GetString(TiXmlElement* el, char* attr, char* out, int len);
  /// Reads a decimal integer. False also when the value does not begin with a number.
  static bool GetNumberFromAttr(TiXmlElement* el, char* attr, int& out);
  /// Reads a decimal floating-point number, narrowed to float. False also when the value does not
  /// begin with a number.
  static bool GetNumberFromAttr(TiXmlElement* el, char* attr, float& out);
  /// The same as GetNumberFromAttr for an integer.
  static bool GetInt(TiXmlElement* el, char* attr, int& out);
  /// Reads an unsigned decimal number of 16 bits. True whenever the attribute exists: a value that
  /// is no number leaves @p out as it was.
  static bool GetShort(TiXmlElement* el, char* attr, unsigned short& out);
  /// Stores 1 for exactly "enabled" or "yes" and 0 for any other value.
  static bool GetBool(TiXmlElement* el, char* attr, char& out);
  /// Deliberately reads nothing: the result is always false and @p out is never touched, so
  /// callers keep the address they had.
  static bool GetIP(TiXmlElement* el, char* attr, unsigned long& out);
  /// @}

  /// @name Reading an element's text
  /// Each returns false, and leaves @p out as it was, when @p el is null or has no child.
  /// @{

  /// Copies the text with its terminator: at most `len - 1` characters. False, with nothing
  /// stored, when @p len is below 1. Characters behind the terminator are left alone.
  static bool GetString(TiXmlElement* el, char& out, int len);
  /// Stores 1 for exactly "enabled" or "yes" and 0 for any other text.
  static bool GetBool(TiXmlElement* el, char& out);
  /// The same into a `bool`; deliberately, an element without text stores false (and the result is
  /// false).
  static bool GetBool(TiXmlElement* el, bool& out);
  /// Reads a decimal integer; its low 32 bits are kept. @p flag is ignored, here and below.
  static bool GetNumber(TiXmlElement* el, int& out, bool flag);
  /// Reads a decimal integer; its low 16 bits are kept.
  static bool GetNumber(TiXmlElement* el, unsigned short& out, bool flag);
  /// Reads a decimal integer; deliberately only its low 16 bits are kept, so 70000 reads as 4464:
  /// the printer's counters wrap at 65536 for every host.
  static bool GetNumber(TiXmlElement* el, unsigned long& out, bool flag);
  /// Reads a decimal integer; its low 32 bits are kept.
  static bool GetNumber(TiXmlElement* el, unsigned int& out, bool flag);
  /// Reads a decimal integer whole.
  static bool GetNumber(TiXmlElement* el, long& out, bool flag);
  /// Reads a floating-point number, narrowed to float.
  static bool GetNumber(TiXmlElement* el, float& out, bool flag);
  /// Reads a hardware address, six hexadecimal fields between colons, into the six bytes at
  /// @p out. A field that is missing or no number stores 0, and only the low byte of each counts.
  static bool GetPhysicalAddress(TiXmlElement* el, unsigned char* out);
  /// @}

  /// @name Adding a child element
  /// Each links a new element @p name as the last child of @p parent, with the value as its one
  /// text. Each returns false, and adds nothing, when a pointer argument is null.
  /// @{

  /// Adds an empty element and returns it; null when @p parent or @p name is null.
  static TiXmlElement* AddTag(TiXmlElement* parent, char* name);
  /// Adds the text as it is; markup characters are escaped when the document is printed.
  static bool AddTagString(TiXmlElement* parent, char* name, char const* text);
  /// Adds a decimal integer.
  static bool AddTagNumber(TiXmlElement* parent, char* name, int value);
  /// Adds a number with four decimals.
  static bool AddTagFloat(TiXmlElement* parent, char* name, float value);
  /// Adds a number with six decimals.
  static bool AddTagDouble(TiXmlElement* parent, char* name, double value);
  /// Adds an unsigned decimal integer.
  static bool AddTagUnsigned(TiXmlElement* parent, char* name, unsigned int value);
  /// Adds a decimal integer of 64 bits.
  static bool AddTagLong(TiXmlElement* parent, char* name, long value);
  /// Adds "yes" when @p flag is not zero, else "no".
  static bool AddTagBool(TiXmlElement* parent, char* name, long flag);
  /// Adds the six bytes at @p address as lower-case hexadecimal fields between colons.
  static bool AddTagPhysicalAddress(TiXmlElement* parent, char* name, unsigned char const* address);
  /// Adds a bounded setting: attributes "min" and "max", then the value as text, all decimal.
  static bool AddTagMinMaxVal(TiXmlElement* parent, char* name, Kovra::_MinMaxVal const& v);
  /// The same in floating point; deliberately the bounds have two decimals and the value four.
  static bool AddTagMinMaxVal(TiXmlElement* parent, char* name, Kovra::_MinMaxValFloat const& v);
  /// @}

  /// @name Setting an attribute
  /// Despite the name no element is added: the attribute is set on @p element itself, replacing an
  /// earlier value. False when a pointer argument is null. Behind a name in a `char*` variable a
  /// null value has to be nullptr: NULL is the number 0 there, and compilers warn of it.
  /// @{
  static bool AddTagAttrib(TiXmlElement* element, char const* name, char const* value);
  static bool AddTagAttrib(TiXmlElement* element, char* name, int value);
  /// @}

  /// @name The printer's keywords as codes
  /// Each compares the keyword with its table from the top; the first match gives the code. No
  /// keyword is an error: an unknown one, and a null pointer, give the code named.
  ///
  /// Each has an overload for texts that can only be read, so a pointer to one needs its type:
  /// `int (*convert)(char*) = &KVXHelper::RibbonNameToInt;`
  /// @{

  /// Ribbon names, in any case: 256 "YMCKO" to 271 "Hologram"; unknown gives 263, black mono.
  static int RibbonNameToInt(char* keyword);
  /// Ribbon descriptions and joined panel words, in any case: 256 to 272 ("ymckoo"); unknown
  /// gives 263. "ko" is read as "kro", and the bare overlays "holo overlay" and "o" as hologram.
  static int RibbonDescriptionToInt(char* keyword);
  /// 0 "dye_sub"; unknown gives -1.
  static int RibbonTypeToInt(char* keyword);
  /// 0 "contact", 1 "iclass", 2 "mifare", 3 "prox", 4 "uhf", 5 "legic", found anywhere in the
  /// text and tried in this order; none gives -1.
  static int FeederSmartToInt(char* keyword);
  /// 1 "pvc", 0 "composite", found anywhere in the text and tried in this order; none gives -1.
  static int FeederTypeToInt(char* keyword);
  /// 1 "low", 2 "high"; unknown gives 0. An index into Kovra::COERCIVITYTYPES.
  static int CoercivityToInt(char* keyword);
  /// 2 "2_side", 1 "1_side"; unknown gives 0.
  static int LaminationTypeToInt(char* keyword);
  /// 1 "serial", 2 "usb"; unknown gives 0.
  static int CommsChannelToInt(char* keyword);
  /// 1 "mifare", 2 "felica", 3 "uhf", 4 "hf", 5 "lf"; unknown gives 0.
  static int ContactlessEncToInt(char* keyword);
  /// 0 "yellow_panel", 1 "magenta_panel", 2 "cyan_panel"; unknown gives -1.
  static int PanelToInt(char* keyword);
  /// 0 "full", 1 "mag", 2 "signature"; unknown gives -1.
  static int LaminatorWidthToInt(char* keyword);
  /// 0 "none", 1 "hologram", 2 "contact"; unknown gives -1.
  static int LaminatorRegistrationToInt(char* keyword);
  /// @}

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool GetString(TiXmlElement* el, Text const& attr, char* out, int len) {
    return GetString(el, Kovra::detail::borrowed(attr), out, len);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool GetNumberFromAttr(TiXmlElement* el, Text const& attr, int& out) {
    return GetNumberFromAttr(el, Kovra::detail::borrowed(attr), out);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool GetNumberFromAttr(TiXmlElement* el, Text const& attr, float& out) {
    return GetNumberFromAttr(el, Kovra::detail::borrowed(attr), out);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool GetInt(TiXmlElement* el, Text const& attr, int& out) {
    return GetInt(el, Kovra::detail::borrowed(attr), out);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool GetShort(TiXmlElement* el, Text const& attr, unsigned short& out) {
    return GetShort(el, Kovra::detail::borrowed(attr), out);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool GetBool(TiXmlElement* el, Text const& attr, char& out) {
    return GetBool(el, Kovra::detail::borrowed(attr), out);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool GetIP(TiXmlElement* el, Text const& attr, unsigned long& out) {
    return GetIP(el, Kovra::detail::borrowed(attr), out);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static TiXmlElement* AddTag(TiXmlElement* parent, Text const& name) {
    return AddTag(parent, Kovra::detail::borrowed(name));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagString(TiXmlElement* parent, Text const& name, char const* text) {
    return AddTagString(parent, Kovra::detail::borrowed(name), text);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagNumber(TiXmlElement* parent, Text const& name, int value) {
    return AddTagNumber(parent, Kovra::detail::borrowed(name), value);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagFloat(TiXmlElement* parent, Text const& name, float value) {
    return AddTagFloat(parent, Kovra::detail::borrowed(name), value);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagDouble(TiXmlElement* parent, Text const& name, double value) {
    return AddTagDouble(parent, Kovra::detail::borrowed(name), value);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagUnsigned(TiXmlElement* parent, Text const& name, unsigned int value) {
    return AddTagUnsigned(parent, Kovra::detail::borrowed(name), value);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagLong(TiXmlElement* parent, Text const& name, long value) {
    return AddTagLong(parent, Kovra::detail::borrowed(name), value);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagBool(TiXmlElement* parent, Text const& name, long flag) {
    return AddTagBool(parent, Kovra::detail::borrowed(name), flag);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagPhysicalAddress(TiXmlElement* parent, Text const& name,
                                    unsigned char const* address) {
    return AddTagPhysicalAddress(parent, Kovra::detail::borrowed(name), address);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagMinMaxVal(TiXmlElement* parent, Text const& name, Kovra::_MinMaxVal const& v) {
    return AddTagMinMaxVal(parent, Kovra::detail::borrowed(name), v);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagMinMaxVal(TiXmlElement* parent, Text const& name,
                              Kovra::_MinMaxValFloat const& v) {
    return AddTagMinMaxVal(parent, Kovra::detail::borrowed(name), v);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static bool AddTagAttrib(TiXmlElement* element, Text const& name, int value) {
    return AddTagAttrib(element, Kovra::detail::borrowed(name), value);
  }
  /// Neither a name nor a value: NULL alone would not say which operation is meant.
  template <
      class Name, class Value,
      typename std::enable_if<
          Kovra::detail::IsNull<Name>::value && Kovra::detail::IsNull<Value>::value, int>::type = 0>
  static bool AddTagAttrib(TiXmlElement*, Name&&, Value&&) {
    return false;
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int RibbonNameToInt(Text const& keyword) {
    return RibbonNameToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int RibbonDescriptionToInt(Text const& keyword) {
    return RibbonDescriptionToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int RibbonTypeToInt(Text const& keyword) {
    return RibbonTypeToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int FeederSmartToInt(Text const& keyword) {
    return FeederSmartToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int FeederTypeToInt(Text const& keyword) {
    return FeederTypeToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int CoercivityToInt(Text const& keyword) {
    return CoercivityToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int LaminationTypeToInt(Text const& keyword) {
    return LaminationTypeToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int CommsChannelToInt(Text const& keyword) {
    return CommsChannelToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int ContactlessEncToInt(Text const& keyword) {
    return ContactlessEncToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int PanelToInt(Text const& keyword) {
    return PanelToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int LaminatorWidthToInt(Text const& keyword) {
    return LaminatorWidthToInt(Kovra::detail::borrowed(keyword));
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  static int LaminatorRegistrationToInt(Text const& keyword) {
    return LaminatorRegistrationToInt(Kovra::detail::borrowed(keyword));
  }
  /// @}
};

#endif
