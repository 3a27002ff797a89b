// The recorder: when switched on, the platform logs in order every property write, focus move,
// message, beep, show and hide that the system's own code asks for, one line each:
//   "m1fld.Visible=1"  "pfld.Text=.0873"  "m1fld.SetFocus"  "MsgBox:Please enter ..."  "Beep"
//   "ControlWnd.Show"  "AboutWnd.Hide"
// Tests read it to check the order of steps. Off, it costs one branch per operation.
#pragma once

#include <string>
#include <vector>

namespace platform::recorder {

void Start();  // clears the log and switches recording on
void Stop();   // switches it off; the log stays readable
bool On();
void Note(const std::string& line);  // appends when on; the platform's operations call this
std::vector<std::string> Lines();    // what was logged since Start

}  // namespace platform::recorder
