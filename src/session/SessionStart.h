#pragma once

class EventLoop;
class MainForm;
class Settings;
class SignInForm;
struct OwnTextStyle;
struct SessionVariables;

// The start of the session's data, once, when the main window loads. Nothing connects by it. A
// setting that cannot be converted raises TypeMismatch (13) or Overflow (6) and ends it there.
void startSession(MainForm& channel, const SignInForm& login, const Settings& settings,
                  EventLoop& events, SessionVariables& variables, OwnTextStyle& style);

// The same of the network alone: another one was chosen, and the next attempt goes there.
void readNetwork(const Settings& settings, SessionVariables& variables);
