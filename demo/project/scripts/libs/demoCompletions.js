// Completion values offered by the filter editors of the demo project.
// masterCompletions(property, systems) tells what kind of completions a
// property has (0 none, 1 one list, 2 depends on other filters, 3 per
// system); slaveCompletions(property, filterValues) answers the properties of
// kind 2 from the current values of the filters they depend on.

var alarmClasses = ["alert", "warning", "info"];
var alarmTexts = ["Overtemperature", "Pressure high", "Pressure low", "Level high",
                  "Level low", "Vibration", "Protection tripped", "Communication lost"];
var devices = ["Motor", "Pump", "Valve", "Tank", "Compressor", "Fan", "Heater", "Conveyor"];

function masterCompletions(property, systems) {
    if (property === "alarmClass")
        return {type: 1, list: alarmClasses};
    if (property === "text")
        return {type: 1, list: alarmTexts};
    if (property === "dpe") {
        var map = {};
        for (var i = 0; i < systems.length; ++i)
            map[systems[i]] = [systems[i] + ":*"];
        return {type: 3, map: map};
    }
    if (property === "description")
        return {type: 2, list: ["alarmClass"]};
    return {type: 0};
}

function slaveCompletions(property, filterValues) {
    // Devices whose alarms are of the chosen class, in the demo's plant.
    var alarmClass = filterValues["alarmClass"] || "";
    var result = alarmClass === "info" ? devices.slice(4) : devices;
    return {list: result.map(function (device) { return device + " *"; })};
}
