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

#undef curl_easy_getinfo
#undef curl_easy_setopt
#undef curl_multi_setopt
#undef curl_share_setopt

#define SONDREL_LOADED(name) static auto *const function = loaded<decltype(name)>(#name)

void curl_free(void *memory)
{
    SONDREL_LOADED(curl_free);
    function(memory);
}

curl_slist *curl_slist_append(curl_slist *list, const char *text)
{
    SONDREL_LOADED(curl_slist_append);
    return function(list, text);
}

void curl_slist_free_all(curl_slist *list)
{
    SONDREL_LOADED(curl_slist_free_all);
    function(list);
}

CURL *curl_easy_init()
{
    SONDREL_LOADED(curl_easy_init);
    return function();
}

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

CURLcode curl_easy_perform(CURL *easy)
{
    SONDREL_LOADED(curl_easy_perform);
    return function(easy);
}

const char *curl_easy_strerror(CURLcode code)
{
    SONDREL_LOADED(curl_easy_strerror);
    return function(code);
}

void curl_easy_cleanup(CURL *easy)
{
    SONDREL_LOADED(curl_easy_cleanup);
    function(easy);
}

CURLM *curl_multi_init()
{
    SONDREL_LOADED(curl_multi_init);
    return function();
}

CURLMcode curl_multi_setopt(CURLM *multi, CURLMoption option, ...)
{
    SONDREL_LOADED(curl_multi_setopt);
    std::va_list arguments;
    va_start(arguments, option);
    const CURLMcode code = setOption(function, multi, option, arguments);
    va_end(arguments);
    return code;
}

CURLMcode curl_multi_add_handle(CURLM *multi, CURL *easy)
{
    SONDREL_LOADED(curl_multi_add_handle);
    return function(multi, easy);
}

CURLMcode curl_multi_remove_handle(CURLM *multi, CURL *easy)
{
    SONDREL_LOADED(curl_multi_remove_handle);
    return function(multi, easy);
}

CURLMcode curl_multi_socket_action(CURLM *multi, curl_socket_t socket, int events, int *running)
{
    SONDREL_LOADED(curl_multi_socket_action);
    return function(multi, socket, events, running);
}

CURLMsg *curl_multi_info_read(CURLM *multi, int *left)
{
    SONDREL_LOADED(curl_multi_info_read);
    return function(multi, left);
}

CURLMcode curl_multi_cleanup(CURLM *multi)
{
    SONDREL_LOADED(curl_multi_cleanup);
    return function(multi);
}

CURLSH *curl_share_init()
{
    SONDREL_LOADED(curl_share_init);
    return function();
}

CURLSHcode curl_share_setopt(CURLSH *share, CURLSHoption option, ...)
{
    SONDREL_LOADED(curl_share_setopt);
    std::va_list arguments;
    va_start(arguments, option);
    const bool isNumber = option == CURLSHOPT_SHARE || option == CURLSHOPT_UNSHARE;
    const CURLSHcode code = isNumber ? function(share, option, va_arg(arguments, int))
                                     : function(share, option, va_arg(arguments, void *));
    va_end(arguments);
    return code;
}

CURLSHcode curl_share_cleanup(CURLSH *share)
{
    SONDREL_LOADED(curl_share_cleanup);
    return function(share);
}

CURLU *curl_url()
{
    SONDREL_LOADED(curl_url);
    return function();
}

void curl_url_cleanup(CURLU *url)
{
    SONDREL_LOADED(curl_url_cleanup);
    function(url);
}

CURLUcode curl_url_get(decltype(firstOf(&curl_url_get)) url, CURLUPart part, char **text, unsigned int flags)
{
    SONDREL_LOADED(curl_url_get);
    return function(url, part, text, flags);
}

CURLUcode curl_url_set(CURLU *url, CURLUPart part, const char *text, unsigned int flags)
{
    SONDREL_LOADED(curl_url_set);
    return function(url, part, text, flags);
}
