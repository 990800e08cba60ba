// Numbers that the program and its resources share. Also read by the resource compiler.
#define IDI_PROGRAM 1
#define IDR_MENU 10
#define IDR_KEYS 11

#define IDM_NEW 100
#define IDM_OPEN_SET 101
#define IDM_OPEN_METHOD 102
#define IDM_SAVE 103
#define IDM_SAVE_AS 104
#define IDM_EXIT 105
#define IDM_VERIFY 110
#define IDM_LOCK 111
#define IDM_COMPARE 112
#define IDM_SHOW_AUDIT 120
#define IDM_SHOW_EVENTS 121
#define IDM_CLEAR_EVENTS 122
#define IDM_ABOUT 130
