// The ranges of settings. All limits are inclusive.

#ifndef LIMITS_H
#define LIMITS_H

#define BUZZER_FREQUENCY_MIN_HZ 700
#define BUZZER_FREQUENCY_MAX_HZ 10000

#define BUZZER_VOLUME_MAX 2000 // the minimum is 0; dimensionless

#define BACKLIGHT_INTENSITY_MIN 1 // the maximum is 255; the device also accepts 0

#define LED_FREQUENCY_MIN_HZ 0.2
#define LED_FREQUENCY_MAX_HZ 50.0

#define LED_DUTY_CYCLE_MAX_PERCENT 100 // the minimum is 0

#define LED_IDLE_TIME_STEP_MS 100

#define HEATER_LIMIT_MIN_CELSIUS (-25)
#define HEATER_LIMIT_MAX_CELSIUS 5

#define VIDEO_CHANNEL_COUNT 4
#define DIGITAL_INPUT_COUNT 4

// The number of CAN channels to assume if the unit does not report it.
#define CAN_CHANNEL_COUNT_USUAL 4

#define TOUCH_DEJITTER_MAX 1 // the minimum is 0

#endif
