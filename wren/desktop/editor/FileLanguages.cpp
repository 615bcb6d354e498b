#include "wren/desktop/editor/FileLanguages.h"

#include <algorithm>
#include <iterator>

namespace wren {

namespace {

using Colours = EditorColours;

const StyleColour kMakeColours[] = {
    {1, &Colours::comment}, {2, &Colours::preprocessor}, {3, &Colours::type}, {5, &Colours::keyword}};
const FileLanguage kMake{"makefile", kMakeColours, {}};

const StyleColour kCMakeColours[] = {{1, &Colours::comment},  {2, &Colours::string},   {3, &Colours::string},
                                     {4, &Colours::string},   {5, &Colours::keyword},  {6, &Colours::type},
                                     {7, &Colours::type},     {9, &Colours::keyword},  {10, &Colours::keyword},
                                     {11, &Colours::keyword}, {12, &Colours::keyword}, {13, &Colours::type},
                                     {14, &Colours::number}};
const FileLanguage kCMake{
    "cmake",
    kCMakeColours,
    {"add_compile_definitions add_compile_options add_custom_command add_custom_target add_definitions "
     "add_dependencies "
     "add_executable add_library add_link_options add_subdirectory add_test aux_source_directory break "
     "cmake_language cmake_minimum_required cmake_parse_arguments cmake_path cmake_policy configure_file continue else "
     "elseif enable_language enable_testing endforeach endfunction endif endmacro endwhile execute_process export file "
     "find_file find_library find_package find_path find_program foreach function get_cmake_property "
     "get_directory_property get_filename_component get_property get_source_file_property get_target_property "
     "get_test_property if include include_directories include_guard install link_directories link_libraries list "
     "macro mark_as_advanced math message option project return separate_arguments set set_directory_properties "
     "set_property set_source_files_properties set_target_properties set_tests_properties site_name source_group "
     "string "
     "target_compile_definitions target_compile_features target_compile_options target_include_directories "
     "target_link_directories target_link_libraries target_link_options target_precompile_headers target_sources "
     "try_compile try_run unset variable_watch while",
     "ALL AND APPEND BOOL BYPRODUCTS CACHE COMMAND COMMENT CONFIG DEFINED DEPENDS DESTINATION EQUAL EXISTS "
     "FATAL_ERROR FILES FORCE GREATER IMPORTED IN INTERFACE INTERNAL ITEMS LESS LISTS MATCHES MODULE NAME NAMES NOT "
     "OBJECT OFF ON OPTIONAL OR OUTPUT PARENT_SCOPE PRIVATE PROPERTIES PROPERTY PUBLIC QUIET REQUIRED SHARED STATIC "
     "STATUS STREQUAL STRING SYSTEM TARGET TARGETS VERBATIM VERSION WARNING WORKING_DIRECTORY"}};

const StyleColour kShellColours[] = {{2, &Colours::comment}, {3, &Colours::number},        {4, &Colours::keyword},
                                     {5, &Colours::string},  {6, &Colours::string},        {9, &Colours::type},
                                     {10, &Colours::type},   {11, &Colours::preprocessor}, {12, &Colours::string},
                                     {13, &Colours::string}};
const FileLanguage kShell{"bash",
                          kShellColours,
                          {"alias bg bind break builtin case cd command continue declare do done elif else esac eval "
                           "exec exit export false fi for function getopts hash if in let local printf read readonly "
                           "return select set shift shopt source test then time trap true type typeset ulimit umask "
                           "unalias unset until wait while"}};

const StyleColour kPythonColours[] = {
    {1, &Colours::comment}, {2, &Colours::number},   {3, &Colours::string},  {4, &Colours::string},
    {5, &Colours::keyword}, {6, &Colours::string},   {7, &Colours::string},  {8, &Colours::type},
    {9, &Colours::type},    {12, &Colours::comment}, {13, &Colours::string}, {15, &Colours::preprocessor},
    {16, &Colours::string}, {17, &Colours::string},  {18, &Colours::string}, {19, &Colours::string}};
const FileLanguage kPython{"python",
                           kPythonColours,
                           {"False None True and as assert async await break class continue def del elif else except "
                            "finally for from global if import in is lambda match nonlocal not or pass raise return "
                            "try while with yield"}};

const StyleColour kJsonColours[] = {{1, &Colours::number},  {2, &Colours::string}, {3, &Colours::string},
                                    {4, &Colours::keyword}, {5, &Colours::string}, {6, &Colours::comment},
                                    {7, &Colours::comment}, {11, &Colours::type}};
const FileLanguage kJson{"json", kJsonColours, {"true false null"}};

const StyleColour kYamlColours[] = {{1, &Colours::comment}, {2, &Colours::keyword},      {3, &Colours::type},
                                    {4, &Colours::number},  {5, &Colours::preprocessor}, {6, &Colours::preprocessor},
                                    {7, &Colours::string}};
const FileLanguage kYaml{"yaml", kYamlColours, {"true false yes no null on off True False Yes No Null On Off"}};

const StyleColour kMarkdownColours[] = {
    {2, &Colours::type},         {3, &Colours::type},     {4, &Colours::type},          {5, &Colours::type},
    {6, &Colours::keyword},      {7, &Colours::keyword},  {8, &Colours::keyword},       {9, &Colours::keyword},
    {10, &Colours::keyword},     {11, &Colours::keyword}, {13, &Colours::number},       {14, &Colours::number},
    {15, &Colours::comment},     {18, &Colours::string},  {19, &Colours::preprocessor}, {20, &Colours::preprocessor},
    {21, &Colours::preprocessor}};
const FileLanguage kMarkdown{"markdown", kMarkdownColours, {}};

// What the assembler reads itself; "#" begins a comment there.
const StyleColour kAssemblerColours[] = {{1, &Colours::comment},  {2, &Colours::number},  {3, &Colours::string},
                                         {6, &Colours::keyword},  {8, &Colours::type},    {9, &Colours::preprocessor},
                                         {11, &Colours::comment}, {12, &Colours::string}, {13, &Colours::string}};
const FileLanguage kAssembler{
    "as",
    kAssemblerColours,
    {nullptr, nullptr, nullptr,
     ".align .ascii .asciz .balign .bss .byte .cfi_endproc .cfi_startproc .comm .data .else .endif .endm .equ .extern "
     ".file .fill .globl .global .hidden .hword .if .ifdef .ifndef .include .int .lcomm .loc .local .long .macro "
     ".octa .org .p2align .popsection .previous .pushsection .quad .rept .endr .section .set .short .size .skip "
     ".space .string .text .type .uleb128 .weak .word .zero"}};

// Comments, strings and directives as in C. What is assembled or linked after the preprocessor, and device trees.
const StyleColour kPreprocessedColours[] = {
    {1, &Colours::comment},      {2, &Colours::comment}, {3, &Colours::comment}, {15, &Colours::comment},
    {4, &Colours::number},       {5, &Colours::keyword}, {6, &Colours::string},  {7, &Colours::string},
    {9, &Colours::preprocessor}, {12, &Colours::string}, {23, &Colours::comment}};
const FileLanguage kPreprocessed{
    "cpp",
    kPreprocessedColours,
    {"ALIGN ASSERT ENTRY EXCLUDE_FILE EXTERN FORCE_COMMON_ALLOCATION GROUP INCLUDE INPUT KEEP LOADADDR MAX MEMORY MIN "
     "NOLOAD OUTPUT OUTPUT_ARCH OUTPUT_FORMAT PHDRS PROVIDE PROVIDE_HIDDEN SECTIONS SIZEOF SIZEOF_HEADERS SORT STARTUP "
     "VERSION"}};

struct Name {
    std::string_view name; // the end of a path, from a "/" or "." on
    const FileLanguage* language;
};

constexpr Name kNames[] = {{"/Makefile", &kMake},
                           {"/makefile", &kMake},
                           {"/GNUmakefile", &kMake},
                           {"/Kbuild", &kMake},
                           {".mk", &kMake},
                           {".mak", &kMake},
                           {".make", &kMake},
                           {"/CMakeLists.txt", &kCMake},
                           {".cmake", &kCMake},
                           {".sh", &kShell},
                           {".bash", &kShell},
                           {".zsh", &kShell},
                           {".ksh", &kShell},
                           {"/.bashrc", &kShell},
                           {"/.profile", &kShell},
                           {"/PKGBUILD", &kShell},
                           {".py", &kPython},
                           {".pyi", &kPython},
                           {".pyw", &kPython},
                           {"/SConstruct", &kPython},
                           {"/SConscript", &kPython},
                           {"/wscript", &kPython},
                           {".json", &kJson},
                           {".jsonl", &kJson},
                           {"/.clang-format", &kYaml},
                           {".yaml", &kYaml},
                           {".yml", &kYaml},
                           {"/.clang-tidy", &kYaml},
                           {"/.clangd", &kYaml},
                           {".md", &kMarkdown},
                           {".markdown", &kMarkdown},
                           {".s", &kAssembler},
                           {".asm", &kAssembler},
                           {".S", &kPreprocessed},
                           {".lds", &kPreprocessed},
                           {".ld", &kPreprocessed},
                           {".lds.S", &kPreprocessed},
                           {".dts", &kPreprocessed},
                           {".dtsi", &kPreprocessed}};

constexpr Name kInterpreters[] = {{"sh", &kShell},  {"bash", &kShell}, {"dash", &kShell},
                                  {"zsh", &kShell}, {"ksh", &kShell},  {"make", &kMake}};

constexpr size_t kLongestFirstLine = 256; // bytes

// "/usr/bin/env -S python3 -u" has "python3".
std::string_view InterpreterOf(std::string_view line)
{
    if (!line.starts_with("#!"))
        return {};
    line = line.substr(2, std::min(line.find_first_of("\r\n"), kLongestFirstLine) - 2);
    while (!line.empty()) {
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        std::string_view word = line.substr(0, line.find_first_of(" \t"));
        line.remove_prefix(word.size());
        word.remove_prefix(word.find_last_of('/') + 1);
        if (word != "env" && !word.starts_with('-'))
            return word;
    }
    return {};
}

} // namespace

const FileLanguage* LanguageOf(const std::string& path, std::string_view beginning)
{
    const std::string whole = "/" + path;
    const auto named = std::ranges::find_if(kNames, [&](const Name& each) { return whole.ends_with(each.name); });
    if (named != std::end(kNames))
        return named->language;
    const std::string_view program = InterpreterOf(beginning);
    if (program.starts_with("python"))
        return &kPython;
    const auto run = std::ranges::find(kInterpreters, program, &Name::name);
    return run == std::end(kInterpreters) ? nullptr : run->language;
}

} // namespace wren
