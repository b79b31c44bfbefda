// Resource files: settings as lines of name and value, with conditional sections.
#pragma once

#include "core/File.h"
#include "core/ResrcName.h"
#include "core/String.h"

#include <string>
#include <vector>

namespace Yul {

class Resrc;

/// Reads the settings of one file, line by line. A line is a name (at most 49 characters) and a value (one
/// word, or a text in double quotes; at most 249 characters); "#" in the first column makes it a comment. The
/// directives DEF, UNDEF, IF, ELIF, ELSE and END (in any case) choose which lines count. A name is a pattern
/// over qualified setting names in which "*" stands for any run of characters. Symbols and conditions belong
/// to one open file.
class ResrcFile
{
public:
    /// store  the settings that name the program ("prog", cut to 30 characters) and its use ("name"); must
    /// outlive this object.
    explicit ResrcFile(Resrc & store);

    /// Opens the file; null or empty is "yul.cfg" in the current directory, a directory is searched for
    /// "yul.cfg", ".yuldef" and "Yul.res". Forgets the symbols and conditions of the file before. Returns 0
    /// when none opens.
    int open(char const * path);
    int close();

    [[nodiscard]] bool isOpen() const noexcept { return file.isOpen(); }

    /// Defines a symbol (cut to 19 characters) as DEF does; 0 when 10 are defined already.
    int setTag(char const * tag);
    /// The next setting whose conditions hold, the name in lower case and without a final ":"; 1, or -1 at
    /// the end of the file or when none is open. Misplaced directives are reported as warnings and passed
    /// over.
    int get(String & name, String & value);

    /// 1 when a name found in a file matches the qualified form of the key. A "*" jumps to the first place
    /// where the text behind it (up to the next "*") occurs and never tries a later one; a final "*" matches
    /// only nothing.
    [[nodiscard]] int compare(char const * key, char const * pattern) const;
    /// 1 when the name is valid for this program: it matches the qualified form of its own bare name.
    [[nodiscard]] int valid(char const * pattern) const;
    /// The text behind the last "." or "*" of the name.
    int parseName(char const * name, String & bare) const;
    /// The next setting that is valid, by its bare name; returns what `get` returns.
    int getValid(String & name, String & value);
    /// Stores every valid setting of a file by its bare name, with type USER; 0 when the file cannot be
    /// opened.
    int readFile(Resrc & into, char const * path);

private:
    enum class Branch { NOT_TAKEN, TAKEN, DONE };

    struct Directive
    {
        char const * name;
        void (ResrcFile::*act)(std::string const & symbol);
    };

    static Directive const DIRECTIVES[];

    [[nodiscard]] static Directive const * findDirective(std::string const & name);
    [[nodiscard]] bool isDefined(std::string const & symbol) const;
    [[nodiscard]] bool isActive() const;
    /// The innermost condition; none, with a warning, outside every IF.
    Branch * innermost(char const * directive);
    void define(std::string const & symbol);
    void undefine(std::string const & symbol);
    void beginIf(std::string const & symbol);
    void elseIf(std::string const & symbol);
    void otherwise(std::string const & symbol);
    void endIf(std::string const & symbol);

    Resrc & store;
    File file;
    detail::ProgramNames names;
    std::vector<std::string> symbols;
    std::vector<Branch> branches;
};

} // namespace Yul
