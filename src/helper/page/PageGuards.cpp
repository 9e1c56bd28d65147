#include "helper/page/PageGuards.h"

namespace zovk::helper {
namespace {

/// Alerts end unseen, questions are answered with no; only a page that asks whether to be left is.
gboolean onDialog(WebKitWebView*, WebKitScriptDialog* dialog) {
  const WebKitScriptDialogType type = webkit_script_dialog_get_dialog_type(dialog);
  const bool leaving = type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
  if (leaving || type == WEBKIT_SCRIPT_DIALOG_CONFIRM) {
    webkit_script_dialog_confirm_set_confirmed(dialog, leaving);
  }
  return TRUE;
}

gboolean onFileChooser(WebKitWebView*, WebKitFileChooserRequest* request) {
  webkit_file_chooser_request_cancel(request);
  return TRUE;
}

gboolean onAuthenticate(WebKitWebView*, WebKitAuthenticationRequest* request) {
  // Without a password the server shows its own page of the refusal.
  webkit_authentication_request_authenticate(request, nullptr);
  return TRUE;
}

gboolean turnDown() {
  return TRUE;
}

}  // namespace

void guardPage(WebKitWebView* view, bool developerTools) {
  g_signal_connect(view, "script-dialog", G_CALLBACK(onDialog), nullptr);
  g_signal_connect(view, "run-file-chooser", G_CALLBACK(onFileChooser), nullptr);
  g_signal_connect(view, "authenticate", G_CALLBACK(onAuthenticate), nullptr);
  g_signal_connect(view, "print", G_CALLBACK(turnDown), nullptr);
  g_signal_connect(view, "run-color-chooser", G_CALLBACK(turnDown), nullptr);
  if (!developerTools) g_signal_connect(view, "context-menu", G_CALLBACK(turnDown), nullptr);
}

}  // namespace zovk::helper
