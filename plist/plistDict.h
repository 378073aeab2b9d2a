// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

#include "framework/core/core.h"
#include "plist/BackReference.h"
#include "plist/ChildIndex.h"

namespace framework {
class CheckBox;
class EditField;
class Label;
class Listbox;
class PopupMenu;
class RadioButton;
class TextField;
class Window;
}  // namespace framework

namespace marrowbeck {

class plist;

/// A node of a property list: a dictionary, or an array, whose keys are "0", "1" and so on. Every value is kept as
/// text beside a type word ("string", "integer", "real", "double", "boolean", "date", "data", or any word that a file
/// had); "dict" and "array" entries are nodes below this one. Keys are equal without regard to case and stand in the
/// order in which they came.
///
/// Nothing raises on bad data: a failed operation tells the document (`plist::error`, `errorMessage`) and returns its
/// neutral result. What raises: a Nil node or control, GetType of an absent key, a numeric Remove of an absent one, and
/// a recursion without end (StackOverflowException), which is what `child` makes of a key that holds a leaf.
class plistDict : public Object {
  public:
    plistDict();
    ~plistDict() override;

    /// @name Nodes and keys
    /// @{

    /// Empties `values` and `types` and, with `read`, reads entries from `stream` up to the node's closing tag.
    virtual void Load(const Ref<TextInputStream>& stream, const String& nodeName, bool asArray,
                      const BackReference<plistDict>& parentNode, const BackReference<plist>& document, bool read);
    /// The node under `key`; made, as a dictionary, where there is none. Never Nil.
    virtual Ref<plistDict> child(const String& key);
    /// The node under the key Str(i), or Nil.
    virtual Ref<plistDict> index(std::int32_t i);
    /// Adds an empty dictionary, or array, under a new key. An existing key is an error; AddArray then says False.
    virtual void AddChild(const String& key);
    virtual bool AddArray(const String& key);
    /// Whether this is an array; if not, that is an error.
    virtual bool CheckArray();
    virtual bool Exists(const String& key);
    /// The type word. Raises KeyNotFoundException for an absent key.
    virtual String GetType(const String& key);
    /// The number of entries, leaves and nodes.
    virtual std::int32_t count();
    /// The names from the top node down, each behind a colon. Raises NilObjectException on the top node.
    virtual String AbsolutePath();
    /// Tells the document, if there is one.
    virtual void SetError(bool isError, const String& message);

    /// @}
    /// @name Cursor
    /// The walk over all keys: MoveFirst; until `eof`: CurrentKey, MoveNext. On an empty node CurrentKey is empty and
    /// sets `eof`.
    /// @{
    virtual void MoveFirst();
    virtual void MoveNext();
    virtual void MoveLast();
    virtual String CurrentKey();

    /// @}
    /// @name Reading values
    /// A missing key is created with the default, so that it reaches the file. Without one the default is empty, 0,
    /// black, the current moment, or True.
    /// @{
    /// The text of any leaf.
    virtual String GetValue(const String& key, const String& defaultValue);
    virtual String GetValue(const String& key);
    virtual String GetString(const String& key, const String& defaultValue);
    virtual String GetString(const String& key);
    /// The Base64 text as it stands. A missing key is created as a string.
    virtual String GetData(const String& key, const String& defaultValue);
    virtual String GetData(const String& key);
    /// The number that a leaf's text says; 0 for a node, -1 for a date.
    virtual std::int32_t GetInteger(const String& key, std::int32_t defaultValue);
    virtual std::int32_t GetInteger(const String& key);
    virtual double GetDouble(const String& key, double defaultValue);
    virtual double GetDouble(const String& key);
    virtual double GetReal(const String& key, double defaultValue);
    virtual double GetReal(const String& key);
    /// False for anything that is no boolean.
    virtual bool GetBoolean(const String& key, bool defaultValue);
    virtual bool GetBoolean(const String& key);
    /// The current moment where the text is no date.
    virtual Ref<Date> GetDate(const String& key, const Ref<Date>& defaultValue);
    virtual Ref<Date> GetDate(const String& key);
    /// Black for anything that is no string.
    virtual Color GetColor(const String& key, Color defaultValue);
    virtual Color GetColor(const String& key);

    /// @}
    /// @name Writing values
    /// A key keeps its type: another one is an error and stores nothing.
    /// @{
    virtual void SetString(const String& key, const String& value);
    /// Rounded to a whole number.
    virtual void SetInteger(const String& key, double value);
    /// Rounded to one decimal.
    virtual void SetDouble(const String& key, double value);
    /// The same, but it cannot change what it stored: a second call is a type mismatch.
    virtual void SetReal(const String& key, double value);
    virtual void SetBoolean(const String& key, bool value);
    virtual void SetDate(const String& key, const Ref<Date>& value);
    /// Takes Base64 text, which is not looked at. Changes whatever type the key had.
    virtual void SetData(const String& key, const String& value);
    /// As six hexadecimal digits, in a string.
    virtual void SetColor(const String& key, Color value);

    /// @}
    /// @name Adding to an array
    /// On a dictionary these are errors and add nothing.
    /// @{
    virtual void AppendString(const String& value);
    virtual void AppendInteger(std::int32_t value);
    /// Of the type "double", with all digits.
    virtual void AppendDouble(double value);
    virtual void AppendBoolean(bool value);
    virtual void AppendDate(const Ref<Date>& value);
    virtual void AppendData(const String& value);
    /// Without leading zeros, so that GetColor misreads a part below 16.
    virtual void AppendColor(Color value);
    virtual void AppendDict();
    virtual void AppendArray();

    /// @}
    /// @name Edits
    /// @{

    /// Removes the entry of a key that is a text; the element at an index that is a number, from 0, of an array, whose
    /// later elements move up. Only arrays without nodes come whole through the latter.
    virtual void Remove(const Variant& key);
    /// Carries an entry, with all below it, into `dest`, under its own name where `newName` is empty. An array arrives
    /// as a dictionary, a "double" not at all. The source goes with `remove`, whether or not something arrived.
    virtual void Move(const String& key, const Ref<plistDict>& dest, bool remove, const String& newName);
    virtual void Move(const String& key, const Ref<plistDict>& dest);
    virtual void Copy(const String& key, const Ref<plistDict>& dest);
    /// An existing `newKey` is an error.
    virtual void Rename(const String& oldKey, const String& newKey);

    /// @}
    /// @name Text
    /// @{

    /// Prints the entries, indented by `level` tabs.
    virtual void Write(const Ref<TextOutputStream>& stream, std::int32_t level);
    /// "<" and ">" as "&lt;" and "&gt;", and back.
    virtual String BracketsToCode(const String& text);
    virtual String CodeToBrackets(const String& text);

    /// @}
    /// @name Lists of strings
    /// @{

    /// Replaces the entry by an array of the strings `first` to `last`. A `first` beyond the end means 0, a `last`
    /// beyond it the end.
    virtual void SetList(const String& key, const Array<String>& list, std::int32_t first, std::int32_t last);
    /// Adds the array's strings to `list`, which is emptied first when `append` is 0.
    virtual void GetList(const String& key, Array<String>& list, std::int32_t append);
    /// Adds an empty array to this array and, where there are strings, a dictionary under the key "-1".
    virtual void AppendList(const Array<String>& list, std::int32_t first, std::int32_t last);

    /// @}
    /// @name Controls and windows
    /// Defined in the library plist_ui, and not virtual for that reason: a program without windows links the tree
    /// alone. A Get of an entry that is missing stores the control's state first.
    /// @{

    /// Rows and selected text, under the control's name and index.
    void SetListbox(const Ref<framework::Listbox>& control);
    void SetPopup(const Ref<framework::PopupMenu>& control);
    /// Adds the stored rows to the control and, with `select`, selects the one whose text was selected.
    void GetListbox(const Ref<framework::Listbox>& control, bool select);
    void GetPopup(const Ref<framework::PopupMenu>& control, bool select);
    /// On an array, as the Set; the key does not reach the file.
    void AppendListbox(const Ref<framework::Listbox>& control);
    void AppendPopup(const Ref<framework::PopupMenu>& control);
    /// The text or value, under the control's name.
    void SetEditField(const Ref<framework::EditField>& control);
    void GetEditField(const Ref<framework::EditField>& control);
    void SetTextField(const Ref<framework::TextField>& control);
    void GetTextField(const Ref<framework::TextField>& control);
    void SetStaticText(const Ref<framework::Label>& control);
    void GetStaticText(const Ref<framework::Label>& control);
    void SetCheckbox(const Ref<framework::CheckBox>& control);
    void GetCheckbox(const Ref<framework::CheckBox>& control);
    void SetRadio(const Ref<framework::RadioButton>& control);
    void GetRadio(const Ref<framework::RadioButton>& control);
    /// Title and bounds.
    void SetWindow(const String& key, const Ref<framework::Window>& window);
    void GetWindow(const String& key, const Ref<framework::Window>& window);
    void AppendWindow(const Ref<framework::Window>& window);
    /// Adds the entries to the clipboard's text; see plist::Dump.
    void Dump(std::int32_t level);

    /// @}

    /// For BackReference.
    const Ref<Anchor<plistDict>>& BackAnchor() { return anchor_.For(this); }

    /// The text of each leaf, by key.
    Ref<Dictionary> values;
    /// The type word of each entry, by key: the list of keys.
    Ref<Dictionary> types;
    /// The key under which the parent has this node; "root" for the top node.
    String name;
    /// The array index last given out.
    std::int32_t indexOf = -1;
    bool isArray = false;
    /// Nil for the top node.
    BackReference<plistDict> parent;
    /// The cursor: a place among the keys, from 0, and whether it went past the last.
    std::int32_t currentIndex = 0;
    bool eof = false;
    /// By key of a leaf, whether a search has told it.
    Ref<Dictionary> searched;

  protected:
    /// 0: the key has another type, which is an error; 1: this type; 2: the key is new.
    virtual std::int32_t CheckType(const String& key, const String& word);
    /// False for a node, which is an error.
    virtual bool TypeOK(const String& key);
    /// At least two digits.
    virtual String MakeTwo(std::int32_t n);
    /// The text without the characters below 32 at its beginning.
    virtual String LStripNonPrintingChars(const String& text);

    /// The nodes below this one and their keys, side by side, from index 1.
    Array<Ref<plistDict>> children{Ref<plistDict>()};
    Array<String> childrenNames{String()};
    /// The document; Nil for a node that was made by hand.
    BackReference<plist> rootClass;

  private:
    friend class EntryPrinter;
    friend class EntryReader;

    void BuildPath(const BackReference<plistDict>& node, const String& text);
    void store(const String& key, const String& word, const String& text);
    void append(const String& word, const String& text);
    Ref<plistDict> addNode(const String& key, bool asArray);
    void appendNode(const String& word);
    void removeKey(const String& key);
    void removeElement(std::int32_t n);
    void moveNode(const String& key, const Ref<plistDict>& dest, const String& target);
    bool isDate(const String& key);

    ChildIndex childIndex_;
    String path;
    AnchorOwner<plistDict> anchor_;
};

/// Whether a type word is that of a node.
bool IsContainer(const String& word);

}  // namespace marrowbeck
