// A game in C#: it greets the player with a popup and prints what the player chose.
// usage: mono Host.exe RESOURCES SERVICE, with libzovkpopup.so.1 where the loader finds it
using System;
using System.Runtime.InteropServices;
using System.Threading;
using ZOVKPopup;

static class Game {
  static bool isPaused, isAnswered;

  // The library calls these later, so the game keeps them.
  static readonly Event pause = _ => isPaused = true;
  static readonly Event resume = _ => isPaused = false;
  static readonly Complete answered = (code, message, _) => {
    Console.WriteLine("answer " + code + " " + message);
    isAnswered = true;
  };

  static void Check(int status) {
    if (status != Native.Ok) throw new Exception(Native.Text(Native.ErrorMessage(status)));
  }

  static int Main(string[] arguments) {
    if (arguments.Length != 2) {
      Console.Error.WriteLine("usage: Host.exe RESOURCES SERVICE");
      return 2;
    }
    var settings = Settings.New();
    settings.ApplicationId = Marshal.StringToCoTaskMemUTF8("hello-host");
    settings.ResourceDirectory = Marshal.StringToCoTaskMemUTF8(arguments[0]);
    Check(Native.SetUp(ref settings));
    var hooks = Hooks.New();
    hooks.PopupsWillAppear = pause;
    hooks.PopupsDidDisappear = resume;
    Check(Native.SetHooks(ref hooks));
    Check(Native.Start(arguments[1], "1", "key"));
    var have = Native.HavePopup(1) ? "yes" : "no";
    Console.WriteLine("version " + Native.Text(Native.Version()) + ", a popup: " + have);
    Check(Native.ShowPopup("hello", 0, answered, IntPtr.Zero, null));
    while (!isAnswered || isPaused) {
      Native.Pump(2000);
      Thread.Sleep(16);  // a frame of the game
    }
    Native.ShutDown();
    return 0;
  }
}
