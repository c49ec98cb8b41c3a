// The way out to the user's web browser.

#pragma once

/// Asks the desktop to open \a url, which is usually a matter of the browser, and returns at once;
/// whether anything opened is not looked at. No shell reads the url. Nothing is done for an empty
/// text and for one that begins with '-', which is never a url but might be taken for an option.
void KvOpenBrowser(const char* url);
