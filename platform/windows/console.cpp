#include "platform/console.h"

#include "platform/text.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <windows.h>

#include <shellapi.h>

namespace TARVO::platform {
namespace {

struct FreeLocal {
    void operator()(void* memory) const { LocalFree(memory); }
};

template <typename Function>
Function* ntFunction(const char* name) {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(ntdll, name)));
}

} // namespace

// The arguments as the language's library hands them over have lost what the code page can't hold.
std::vector<std::optional<std::string>> utf8Arguments(int, const char* const*) {
    int count = 0;
    const std::unique_ptr<wchar_t*, FreeLocal> texts{CommandLineToArgvW(GetCommandLineW(), &count)};
    std::vector<std::optional<std::string>> arguments;
    for (int i = 1; texts && i < count; ++i) {
        const std::u16string_view text = reinterpret_cast<const char16_t*>(texts.get()[i]);
        std::string argument;
        appendUtf8(text, argument);
        std::u16string decoded;
        appendUtf16(argument, decoded);
        arguments.push_back(decoded == text ? std::optional(argument) : std::nullopt);
    }
    return arguments;
}

void useUtf8Console() {
    static const UINT codePageBefore = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] {
        std::fflush(stdout);
        SetConsoleOutputCP(codePageBefore);
    });
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

std::size_t consoleWidth() {
    CONSOLE_SCREEN_BUFFER_INFO information{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &information)) {
        return 80;
    }
    return static_cast<std::size_t>(information.srWindow.Right - information.srWindow.Left + 1);
}

bool hasErrorTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

// What GetVersionEx tells depends on the program's manifest.
std::string systemDescription() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    const auto getVersion = ntFunction<LONG WINAPI(OSVERSIONINFOW*)>("RtlGetVersion");
    if (!getVersion || getVersion(&version) != 0) {
        return "Windows";
    }
    std::string text = "Windows " + std::to_string(version.dwMajorVersion) + '.' +
                       std::to_string(version.dwMinorVersion) + '.' +
                       std::to_string(version.dwBuildNumber) + ", x86_64";
    if (const auto wineVersion = ntFunction<const char*()>("wine_get_version")) {
        text.append(", under Wine ").append(wineVersion());
    }
    return text;
}

} // namespace TARVO::platform
