// Marovia Sondrel - positions of web sites in search engine results
#pragma once

namespace sondrel {

/// Loads libcurl, which otherwise waits for the first call of one of its functions. Throws Failure when it
/// cannot be had.
void needCurl();

} // namespace sondrel
