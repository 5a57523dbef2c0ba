// Completion values offered by the filter editors of the demo project: the
// values that occur in its simulated systems (config/alarm-simulation.json).
// masterCompletions(property, systems) tells what kind of completions a
// property has (0 none, 1 one list, 2 depends on other filters, 3 per
// system) and returns them; slaveCompletions(property, filterValues) answers
// the properties of kind 2 from the current values of the filters they
// depend on.

// The simulated systems and their numbers of alarm-carrying elements, as
// config/alarm-simulation.json defines them.
var systemElements = {Boiler: 120, Turbine: 80, Substation: 60, WaterTreatment: 50};

// The simulator's catalog: devices by element number, alarm texts, classes.
var devices = ["Motor", "Pump", "Valve", "Tank", "Compressor", "Fan", "Heater", "Conveyor"];
var alarmTexts = ["Overtemperature", "Pressure high", "Pressure low", "Level high",
                  "Level low", "Vibration", "Protection tripped", "Communication lost"];
var alarmClasses = ["alert", "warning", "info"];

function pad(number, width) {
    var text = String(number);
    while (text.length < width)
        text = "0" + text;
    return text;
}

// One property of every element of a system, as the simulator names it.
function elementValues(system, property) {
    var values = [];
    var count = systemElements[system] || 0;
    for (var i = 0; i < count; ++i) {
        var area = Math.floor(i / 64) + 1;
        var device = devices[i % 8];
        if (property === "dpe")
            values.push(system + ":Area" + pad(area, 2) + "." + device + pad(i, 5) + ".alarm");
        else if (property === "alias")
            values.push("A" + pad(area, 2) + "-" + device.substring(0, 3).toUpperCase() + "-" + pad(i, 5));
        else
            values.push(device + " " + i + " in area " + area);
    }
    return values;
}

function perSystem(property, systems) {
    var map = {};
    for (var i = 0; i < systems.length; ++i)
        map[systems[i]] = elementValues(systems[i], property);
    return {type: 3, map: map};
}

function masterCompletions(property, systems) {
    if (property === "alarmClass")
        return {type: 1, list: alarmClasses};
    if (property === "text")
        return {type: 1, list: alarmTexts};
    if (property === "system")
        return {type: 1, list: Object.keys(systemElements)};
    if (property === "dpe" || property === "description")
        return perSystem(property, systems);
    // The aliases offered follow the system filter.
    if (property === "alias")
        return {type: 2, list: ["system"]};
    return {type: 0};
}

// The systems a filter text names: names separated by blanks, commas or
// semicolons, each possibly with * wildcards; an empty text names them all.
function namedSystems(filterText) {
    var all = Object.keys(systemElements);
    var patterns = (filterText || "").split(/[\s,;]+/).filter(function (p) { return p.length > 0; });
    if (patterns.length === 0)
        return all;
    return all.filter(function (system) {
        return patterns.some(function (pattern) {
            var expression = "^" + pattern.replace(/[.+?^${}()|[\]\\]/g, "\\$&").replace(/\*/g, ".*") + "$";
            return new RegExp(expression, "i").test(system);
        });
    });
}

function slaveCompletions(property, filterValues) {
    if (property !== "alias")
        return {list: []};
    var systems = namedSystems(filterValues["system"]);
    var list = [];
    for (var i = 0; i < systems.length; ++i)
        list = list.concat(elementValues(systems[i], "alias"));
    return {list: list};
}
