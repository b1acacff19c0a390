// libcurl's functions, each under its own name: the first call of one loads the library. With the twenty
// libraries that it needs it would take a good part of the program's start, and nothing there transfers.
#include "lookup/curl_on_demand.h"

#include "core/failure.h"

#include <curl/curl.h>

#include <dlfcn.h>

#include <cstdarg>

using namespace Qt::Literals::StringLiterals;

namespace {

// Stays loaded to the end: nobody knows when the last connection has gone.
void *loadLibrary()
{
    void *library = ::dlopen("libcurl.so.4", RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw sondrel::Failure(u"Cannot start libcurl: "_s + QString::fromLocal8Bit(::dlerror()));
    const auto start = reinterpret_cast<decltype(curl_global_init) *>(::dlsym(library, "curl_global_init"));
    if (!start || start(CURL_GLOBAL_DEFAULT) != CURLE_OK)
        throw sondrel::Failure(u"Cannot start libcurl"_s);
    return library;
}

void *library()
{
    static void *const loaded = loadLibrary();
    return loaded;
}

template <typename Function>
Function *loaded(const char *name)
{
    void *function = ::dlsym(library(), name);
    if (!function)
        throw sondrel::Failure(u"This libcurl has no "_s + QString::fromLatin1(name));
    return reinterpret_cast<Function *>(function);
}

// Some versions take what another has as const.
template <typename Result, typename First, typename... Rest>
First firstOf(Result (*)(First, Rest...));

// What kind of argument an option takes is told by its number.
template <typename Handle, typename Option, typename Set>
auto setOption(Set *set, Handle *handle, Option option, std::va_list &arguments)
{
    const int kind = static_cast<int>(option) / CURLOPTTYPE_OBJECTPOINT * CURLOPTTYPE_OBJECTPOINT;
    if (kind == CURLOPTTYPE_LONG)
        return set(handle, option, va_arg(arguments, long));
    if (kind == CURLOPTTYPE_OFF_T)
        return set(handle, option, va_arg(arguments, curl_off_t));
    return set(handle, option, va_arg(arguments, void *));
}

} // namespace

void sondrel::needCurl()
{
    library();
}

// The name before the dots is an enumeration wherever libcurl has dots; each compiler passes it as it is.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wvarargs"
#endif

#undef curl_easy_getinfo
#undef curl_easy_setopt
#undef curl_multi_setopt
#undef curl_share_setopt

#define SONDREL_LOADED(name) static auto *const function = loaded<decltype(name)>(#name)
#define SONDREL_FORWARDED(name, result, parameters, arguments)                                               \
    result name parameters                                                                                   \
    {                                                                                                        \
        SONDREL_LOADED(name);                                                                                \
        return function arguments;                                                                           \
    }

SONDREL_FORWARDED(curl_free, void, (void *memory), (memory))
SONDREL_FORWARDED(curl_slist_append, curl_slist *, (curl_slist * list, const char *text), (list, text))
SONDREL_FORWARDED(curl_slist_free_all, void, (curl_slist * list), (list))
SONDREL_FORWARDED(curl_easy_init, CURL *, (), ())

CURLcode curl_easy_setopt(CURL *easy, CURLoption option, ...)
{
    SONDREL_LOADED(curl_easy_setopt);
    std::va_list arguments;
    va_start(arguments, option);
    const CURLcode code = setOption(function, easy, option, arguments);
    va_end(arguments);
    return code;
}

CURLcode curl_easy_getinfo(CURL *easy, CURLINFO info, ...)
{
    SONDREL_LOADED(curl_easy_getinfo);
    std::va_list arguments;
    va_start(arguments, info);
    const CURLcode code = function(easy, info, va_arg(arguments, void *)); // where it is to be put
    va_end(arguments);
    return code;
}

SONDREL_FORWARDED(curl_easy_perform, CURLcode, (CURL * easy), (easy))
SONDREL_FORWARDED(curl_easy_strerror, const char *, (CURLcode code), (code))
SONDREL_FORWARDED(curl_easy_cleanup, void, (CURL * easy), (easy))
SONDREL_FORWARDED(curl_multi_init, CURLM *, (), ())

CURLMcode curl_multi_setopt(CURLM *multi, CURLMoption option, ...)
{
    SONDREL_LOADED(curl_multi_setopt);
    std::va_list arguments;
    va_start(arguments, option);
    const CURLMcode code = setOption(function, multi, option, arguments);
    va_end(arguments);
    return code;
}

SONDREL_FORWARDED(curl_multi_add_handle, CURLMcode, (CURLM * multi, CURL *easy), (multi, easy))
SONDREL_FORWARDED(curl_multi_remove_handle, CURLMcode, (CURLM * multi, CURL *easy), (multi, easy))
SONDREL_FORWARDED(curl_multi_socket_action, CURLMcode,
                  (CURLM * multi, curl_socket_t socket, int events, int *running),
                  (multi, socket, events, running))
SONDREL_FORWARDED(curl_multi_info_read, CURLMsg *, (CURLM * multi, int *left), (multi, left))
SONDREL_FORWARDED(curl_multi_cleanup, CURLMcode, (CURLM * multi), (multi))
SONDREL_FORWARDED(curl_share_init, CURLSH *, (), ())

CURLSHcode curl_share_setopt(CURLSH *share, CURLSHoption option, ...)
{
    SONDREL_LOADED(curl_share_setopt);
    std::va_list arguments;
    va_start(arguments, option);
    const bool isNumber = option == CURLSHOPT_SHARE || option == CURLSHOPT_UNSHARE;
    // NOLINTNEXTLINE(bugprone-branch-clone): what is taken from the arguments differs
    const CURLSHcode code = isNumber ? function(share, option, va_arg(arguments, int))
                                     : function(share, option, va_arg(arguments, void *));
    va_end(arguments);
    return code;
}

SONDREL_FORWARDED(curl_share_cleanup, CURLSHcode, (CURLSH * share), (share))
SONDREL_FORWARDED(curl_url, CURLU *, (), ())
SONDREL_FORWARDED(curl_url_cleanup, void, (CURLU * url), (url))
SONDREL_FORWARDED(curl_url_get, CURLUcode,
                  (decltype(firstOf(&curl_url_get)) url, CURLUPart part, char **text, unsigned int flags),
                  (url, part, text, flags))
SONDREL_FORWARDED(curl_url_set, CURLUcode,
                  (CURLU * url, CURLUPart part, const char *text, unsigned int flags),
                  (url, part, text, flags))
